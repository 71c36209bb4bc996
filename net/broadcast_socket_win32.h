// sktBC on Winsock: one UDP socket, event-driven through a window message, so that datagrams are read between other
// window events.
#pragma once

#include <winsock2.h>
#include <windows.h>

#include <functional>
#include <string>
#include <string_view>

#include "net/datagram_port.h"

namespace net {

class BroadcastSocket : public DatagramPort {
 public:
  using Arrival = std::function<void(std::string_view)>;

  // Hands every datagram to `arrival`, on this thread, from the message loop.
  explicit BroadcastSocket(Arrival arrival);
  ~BroadcastSocket() override;
  BroadcastSocket(const BroadcastSocket&) = delete;
  BroadcastSocket& operator=(const BroadcastSocket&) = delete;

  void Open(int port) override;
  void Close() override;
  void Send(std::string_view bytes) override;

 private:
  // members are the implementer's
};

}  // namespace net
