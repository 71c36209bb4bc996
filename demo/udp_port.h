// The broadcast socket on the sockets of Linux, for the partner.
#pragma once

#include <netinet/in.h>

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

  // Waits for a datagram, at most so many milliseconds, and takes it. False when none came or a signal did.
  bool Receive(std::string& datagram, int milliseconds);

 private:
  int socket_ = -1;
  sockaddr_in everybody_{};
};

}  // namespace demo
