// One UDP socket over IPv4 that may broadcast, on the sockets of the system that it is built for.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace wire {

// Addresses of hosts are numbers in the machine's own byte order.
struct Address {
  std::uint32_t host = 0;
  int port = 0;

  friend bool operator==(const Address&, const Address&) = default;
};

inline constexpr std::uint32_t kAnyHost = 0, kLimitedBroadcast = 0xFFFFFFFF;

constexpr bool IsLoopback(std::uint32_t host) { return host >> 24 == 127; }

// "10.99.0.1"
std::string HostText(std::uint32_t host);

// Throws std::invalid_argument when the text is no such address.
std::uint32_t ParseHost(const std::string& text);

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

  // Port 0 is any free one; every other is shared with programs that share it too. Throws core::RuntimeError with the
  // system's number and description. An open socket is closed first.
  void Open(const Address& here);
  void Close();
  bool IsOpen() const { return handle_ != kNone; }

  // False when the system refuses the datagram; Failure then tells why.
  bool Send(std::string_view bytes, const Address& to);
  const std::string& Failure() const { return failure_; }

  // Waits for a datagram, at most so many milliseconds, and takes it. False when none came or something else did.
  bool Receive(Datagram& datagram, int milliseconds);

  // What poll takes.
  std::intptr_t Handle() const { return handle_; }

 private:
  static constexpr std::intptr_t kNone = -1;

  std::intptr_t handle_ = kNone;
  std::string failure_;
};

// The own address from which a datagram to this one would leave; nothing is sent. Throws core::RuntimeError when the
// system knows no way there.
std::uint32_t AddressTowards(const Address& destination);

}  // namespace wire
