#include <winsock2.h>
#include <windows.h>
#include <ws2tcpip.h>

#include <utility>

#include "core/runtime_error.h"
#include "tools/wire/udp_socket.h"
#include "tools/wire/winsock_win32.h"

namespace wire {
namespace {

constexpr int kMaxDatagram = 65535;
constexpr int kReceiveBuffer = 4 * 1024 * 1024;  // for the answers of hundreds of copies at once

sockaddr_in SystemAddress(const Address& address) {
  sockaddr_in converted{};
  converted.sin_family = AF_INET;
  converted.sin_addr.s_addr = ::htonl(address.host);
  converted.sin_port = ::htons(static_cast<u_short>(address.port));
  return converted;
}

void SetOption(SOCKET socket, int option, int value) {
  ::setsockopt(socket, SOL_SOCKET, option, reinterpret_cast<const char*>(&value), sizeof value);
}

SOCKET SystemSocket(std::intptr_t handle) { return static_cast<SOCKET>(handle); }

}  // namespace

// Once, for the lifetime of the process.
void StartWinsock() {
  static const int error = [] {
    WSADATA data;
    return ::WSAStartup(MAKEWORD(2, 2), &data);
  }();
  if (error != 0) throw core::RuntimeError(error, SystemErrorText(error));
}

std::string SystemErrorText(int number) {
  char text[300] = "";
  const DWORD length = ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        static_cast<DWORD>(number), 0, text, sizeof text, nullptr);
  const std::string message(text, length);
  return message.substr(0, message.find_last_not_of(" .\r\n") + 1);
}

std::uint32_t AddressTowards(const Address& destination) {
  StartWinsock();
  const SOCKET socket = ::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
  SetOption(socket, SO_BROADCAST, 1);
  sockaddr_in address = SystemAddress(destination);
  const bool refused = ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0;
  const int error = refused ? ::WSAGetLastError() : 0;
  int size = sizeof address;
  ::getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size);
  ::closesocket(socket);
  if (refused) throw core::RuntimeError(error, SystemErrorText(error));
  return ::ntohl(address.sin_addr.s_addr);
}

void UdpSocket::Open(const Address& here) {
  StartWinsock();
  Close();
  const SOCKET socket = ::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
  handle_ = static_cast<std::intptr_t>(socket);
  if (here.port != 0) SetOption(socket, SO_REUSEADDR, 1);
  SetOption(socket, SO_BROADCAST, 1);
  SetOption(socket, SO_RCVBUF, kReceiveBuffer);
  const sockaddr_in address = SystemAddress(here);
  if (::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return;
  const int error = ::WSAGetLastError();
  Close();
  throw core::RuntimeError(error, SystemErrorText(error));
}

void UdpSocket::Close() {
  if (IsOpen()) ::closesocket(SystemSocket(std::exchange(handle_, kNone)));
}

bool UdpSocket::Send(std::string_view bytes, const Address& to) {
  const sockaddr_in address = SystemAddress(to);
  const bool sent = ::sendto(SystemSocket(handle_), bytes.data(), static_cast<int>(bytes.size()), 0,
                             reinterpret_cast<const sockaddr*>(&address), sizeof address) >= 0;
  failure_ = sent ? "" : SystemErrorText(::WSAGetLastError());
  return sent;
}

bool UdpSocket::Receive(Datagram& datagram, int milliseconds) {
  const SOCKET socket = SystemSocket(handle_);
  WSAPOLLFD waiting{socket, POLLRDNORM, 0};
  if (::WSAPoll(&waiting, 1, milliseconds) <= 0) return false;
  datagram.bytes.resize(kMaxDatagram);
  sockaddr_in from{};
  int size = sizeof from;
  const int length =
      ::recvfrom(socket, datagram.bytes.data(), kMaxDatagram, 0, reinterpret_cast<sockaddr*>(&from), &size);
  datagram.bytes.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
  datagram.sender = {.host = ::ntohl(from.sin_addr.s_addr), .port = ::ntohs(from.sin_port)};
  return !datagram.bytes.empty();
}

}  // namespace wire
