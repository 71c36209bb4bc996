// The broadcast socket as the send operations see it.
#pragma once

#include <cstdint>
#include <string_view>

namespace net {

class DatagramPort {
 public:
  virtual ~DatagramPort() = default;

  // Binds 0.0.0.0:port for receiving and sends to 255.255.255.255:port. Throws core::RuntimeError with the number and
  // a plain description of the network's refusal. An open port is closed first.
  virtual void Open(int port) = 0;

  // Nothing happens when it is closed.
  virtual void Close() = 0;

  // One datagram. Failures and a closed port are silent: nobody waits for an answer. What is sent while there is no
  // network goes out when there is one again.
  virtual void Send(std::string_view bytes) = 0;

  // Has the owner of the port called after so many milliseconds, or a little later, while it is open. A second call
  // replaces the first one.
  virtual void WakeIn(std::uint32_t milliseconds) = 0;
};

}  // namespace net
