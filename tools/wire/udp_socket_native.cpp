#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

#include "core/runtime_error.h"
#include "tools/wire/udp_socket.h"

namespace wire {
namespace {

constexpr std::size_t kMaxDatagram = 65535;

// For the answers of hundreds of copies at once. The system's own limit may reduce it.
constexpr int kReceiveBuffer = 4 * 1024 * 1024;

sockaddr_in SystemAddress(const Address& address) {
  sockaddr_in converted{};
  converted.sin_family = AF_INET;
  converted.sin_addr.s_addr = ::htonl(address.host);
  converted.sin_port = ::htons(static_cast<in_port_t>(address.port));
  return converted;
}

void SetOption(int socket, int option, int value) { ::setsockopt(socket, SOL_SOCKET, option, &value, sizeof value); }

}  // namespace

std::uint32_t AddressTowards(const Address& destination) {
  const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  SetOption(socket, SO_BROADCAST, 1);
  sockaddr_in address = SystemAddress(destination);
  const int error = ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 ? 0 : errno;
  socklen_t size = sizeof address;
  ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
  ::close(socket);
  if (error != 0) throw core::RuntimeError(error, std::strerror(error));
  return ::ntohl(address.sin_addr.s_addr);
}

void UdpSocket::Open(const Address& here) {
  Close();
  const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  handle_ = socket;
  if (here.port != 0) SetOption(socket, SO_REUSEADDR, 1);
  SetOption(socket, SO_BROADCAST, 1);
  SetOption(socket, SO_RCVBUF, kReceiveBuffer);
  const sockaddr_in address = SystemAddress(here);
  if (::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return;
  const int error = errno;
  Close();
  throw core::RuntimeError(error, std::strerror(error));
}

void UdpSocket::Close() {
  if (IsOpen()) ::close(static_cast<int>(std::exchange(handle_, kNone)));
}

bool UdpSocket::Send(std::string_view bytes, const Address& to) {
  const sockaddr_in address = SystemAddress(to);
  const bool sent = ::sendto(static_cast<int>(handle_), bytes.data(), bytes.size(), 0,
                             reinterpret_cast<const sockaddr*>(&address), sizeof address) >= 0;
  failure_ = sent ? "" : std::strerror(errno);
  return sent;
}

bool UdpSocket::Receive(Datagram& datagram, int milliseconds) {
  const int socket = static_cast<int>(handle_);
  pollfd waiting{.fd = socket, .events = POLLIN, .revents = 0};
  if (::poll(&waiting, 1, milliseconds) <= 0) return false;
  datagram.bytes.resize(kMaxDatagram);
  sockaddr_in from{};
  socklen_t size = sizeof from;
  const ssize_t length = ::recvfrom(socket, datagram.bytes.data(), datagram.bytes.size(), MSG_DONTWAIT,
                                    reinterpret_cast<sockaddr*>(&from), &size);
  datagram.bytes.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  datagram.sender = {.host = ::ntohl(from.sin_addr.s_addr), .port = ::ntohs(from.sin_port)};
  return !datagram.bytes.empty();
}

}  // namespace wire
