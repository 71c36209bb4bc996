#include "tools/wire/udp_port.h"

#include <algorithm>

namespace wire {

void UdpPort::Open(int port) {
  broadcast_.port = port;
  socket_.Open({.host = IsLoopback(broadcast_.host) ? broadcast_.host : kAnyHost, .port = port});
}

void UdpPort::Close() {
  wake_.reset();
  socket_.Close();
}

void UdpPort::Send(std::string_view bytes) {
  if (socket_.IsOpen()) socket_.Send(bytes, broadcast_);
}

void UdpPort::WakeIn(std::uint32_t milliseconds) { wake_ = Clock::now() + std::chrono::milliseconds(milliseconds); }

std::chrono::milliseconds UdpPort::CallWhenDue(std::chrono::milliseconds limit) {
  if (wake_ && *wake_ <= Clock::now()) {
    wake_.reset();
    onWake();
  }
  if (!wake_) return limit;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*wake_ - Clock::now());
  return std::clamp(left, std::chrono::milliseconds(0), limit);
}

bool UdpPort::Receive(Datagram& datagram, std::chrono::milliseconds time) {
  return socket_.Receive(datagram, static_cast<int>(CallWhenDue(time).count()));
}

}  // namespace wire
