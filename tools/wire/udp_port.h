// The broadcast socket of a program without windows, whose owner waits for datagrams in its own loop.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "net/datagram_port.h"
#include "tools/wire/udp_socket.h"

namespace wire {

class UdpPort : public net::DatagramPort {
 public:
  // Sends to this broadcast address. With a loopback address, it only receives what is sent to the same address, so
  // that nothing enters or leaves the machine.
  explicit UdpPort(std::uint32_t broadcast = kLimitedBroadcast) : broadcast_{.host = broadcast, .port = 0} {}

  void Open(int port) override;
  void Close() override;
  void Send(std::string_view bytes) override;
  void WakeIn(std::uint32_t milliseconds) override;

  // Why the last Send failed; empty if it succeeded.
  const std::string& Failure() const { return socket_.Failure(); }

  // Called by Receive when the time of WakeIn is over.
  std::function<void()> onWake = [] {};

  // See UdpSocket::Receive.
  bool Receive(Datagram& datagram, std::chrono::milliseconds time);

 private:
  using Clock = std::chrono::steady_clock;

  // Calls onWake if it is due. Returns the time until it is, at most `limit`.
  std::chrono::milliseconds CallWhenDue(std::chrono::milliseconds limit);

  UdpSocket socket_;
  Address broadcast_;
  std::optional<Clock::time_point> wake_;
};

}  // namespace wire
