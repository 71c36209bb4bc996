// The broadcast socket on the sockets of Linux, for the partner.
#pragma once

#include <netinet/in.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "net/datagram_port.h"

namespace demo {

class UdpPort : public net::DatagramPort {
 public:
  UdpPort() = default;
  ~UdpPort() override { Close(); }
  UdpPort(const UdpPort&) = delete;
  UdpPort& operator=(const UdpPort&) = delete;

  void Open(int port) override;
  void Close() override;
  void Send(std::string_view bytes) override;
  void WakeIn(std::uint32_t milliseconds) override;

  // What WakeIn calls, from inside Receive.
  std::function<void()> onWake = [] {};

  // Waits for a datagram, at most so many milliseconds, and takes it. False when none came or something else did.
  bool Receive(std::string& datagram, int milliseconds);

 private:
  using Clock = std::chrono::steady_clock;

  // Calls the owner when it is time. The milliseconds until then, at most the given ones.
  int WakeOwner(int most);

  int socket_ = -1;
  sockaddr_in everybody_{};
  std::optional<Clock::time_point> wake_;
};

}  // namespace demo
