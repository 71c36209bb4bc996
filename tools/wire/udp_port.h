// The broadcast socket of a program without windows: the owner waits for datagrams in a loop of its own.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "net/datagram_port.h"
#include "tools/wire/udp_socket.h"

namespace wire {

class UdpPort : public net::DatagramPort {
 public:
  // Sends to this broadcast address. With one of the loopback only what is sent to the same one is heard: such a
  // segment stays inside the machine, and what its network says stays outside.
  explicit UdpPort(std::uint32_t everybody = kLimitedBroadcast) : everybody_{.host = everybody, .port = 0} {}

  void Open(int port) override;
  void Close() override;
  void Send(std::string_view bytes) override;
  void WakeIn(std::uint32_t milliseconds) override;

  // Why the last Send failed, empty when it did not.
  const std::string& Failure() const { return socket_.Failure(); }

  // What WakeIn calls, from inside Receive.
  std::function<void()> onWake = [] {};

  // As UdpSocket::Receive.
  bool Receive(Datagram& datagram, std::chrono::milliseconds time);

 private:
  using Clock = std::chrono::steady_clock;

  // Calls the owner when it is time. The time until then, at most the given one.
  std::chrono::milliseconds WakeOwner(std::chrono::milliseconds most);

  UdpSocket socket_;
  Address everybody_;
  std::optional<Clock::time_point> wake_;
};

}  // namespace wire
