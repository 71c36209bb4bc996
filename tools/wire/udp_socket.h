// An IPv4 UDP socket that may broadcast, for Linux and Windows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tools/wire/address.h"

namespace wire {

struct Datagram {
  std::string bytes;
  Address sender;
};

class UdpSocket {
 public:
  UdpSocket() = default;
  ~UdpSocket() { Close(); }
  UdpSocket(const UdpSocket&) = delete;
  UdpSocket& operator=(const UdpSocket&) = delete;

  // Binds to this address, after closing an open socket. Port 0 is any free port; another port is shared with programs
  // that share it too. Throws core::RuntimeError with the system's number and description.
  void Open(const Address& here);
  void Close();
  bool IsOpen() const { return handle_ != kNone; }

  // False when the system refuses the datagram; see Failure.
  bool Send(std::string_view bytes, const Address& to);
  const std::string& Failure() const { return failure_; }

  // Waits for a datagram, at most this many milliseconds. False on a timeout, an error or an empty datagram.
  bool Receive(Datagram& datagram, int milliseconds);

  // For poll().
  std::intptr_t Handle() const { return handle_; }

 private:
  static constexpr std::intptr_t kNone = -1;

  std::intptr_t handle_ = kNone;
  std::string failure_;
};

// The local address from which a datagram to this destination would be sent. Sends nothing. Throws core::RuntimeError
// when there is no route.
std::uint32_t AddressTowards(const Address& destination);

}  // namespace wire
