#include "demo/udp_port.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "core/runtime_error.h"
#include "demo/terminal.h"

namespace demo {
namespace {

constexpr std::size_t kLargestDatagram = 65535;

const sockaddr* Generic(const sockaddr_in& address) { return reinterpret_cast<const sockaddr*>(&address); }

sockaddr_in AddressOf(in_addr_t host, int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(host);
  address.sin_port = htons(static_cast<in_port_t>(port));
  return address;
}

}  // namespace

void UdpPort::Open(int port) {
  Close();
  socket_ = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  for (const int option : {SO_REUSEADDR, SO_BROADCAST}) {
    const int on = 1;
    ::setsockopt(socket_, SOL_SOCKET, option, &on, sizeof on);
  }
  everybody_ = AddressOf(INADDR_BROADCAST, port);
  const sockaddr_in here = AddressOf(INADDR_ANY, port);
  if (::bind(socket_, Generic(here), sizeof here) == 0) return;
  const int error = errno;
  Close();
  throw core::RuntimeError(error, std::strerror(error));
}

void UdpPort::Close() {
  wake_.reset();
  if (socket_ >= 0) ::close(std::exchange(socket_, -1));
}

void UdpPort::Send(std::string_view bytes) {
  if (socket_ < 0) return;
  ShowPacket("sent", bytes);
  if (::sendto(socket_, bytes.data(), bytes.size(), 0, Generic(everybody_), sizeof everybody_) < 0) {
    // Lost, like any datagram.
  }
}

void UdpPort::WakeIn(std::uint32_t milliseconds) { wake_ = Clock::now() + std::chrono::milliseconds(milliseconds); }

int UdpPort::WakeOwner(int most) {
  if (wake_ && *wake_ <= Clock::now()) {
    wake_.reset();
    onWake();
  }
  if (!wake_) return most;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*wake_ - Clock::now()).count();
  return static_cast<int>(std::clamp<std::int64_t>(left, 0, most));
}

bool UdpPort::Receive(std::string& datagram, int milliseconds) {
  pollfd waiting{.fd = socket_, .events = POLLIN, .revents = 0};
  if (::poll(&waiting, 1, WakeOwner(milliseconds)) <= 0) return false;
  datagram.resize(kLargestDatagram);
  const ssize_t length = ::recv(socket_, datagram.data(), datagram.size(), 0);
  datagram.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  if (!datagram.empty()) ShowPacket("heard", datagram);
  return !datagram.empty();
}

}  // namespace demo
