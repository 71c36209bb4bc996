// An IPv4 UDP socket that may broadcast, for Linux and Windows.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace wire {

// Hosts are in the machine's byte order.
struct Address {
  std::uint32_t host = 0;
  int port = 0;

  friend bool operator==(const Address&, const Address&) = default;
};

inline constexpr std::uint32_t kAnyHost = 0, kLimitedBroadcast = 0xFFFFFFFF;

constexpr bool IsLoopback(std::uint32_t host) { return host >> 24 == 127; }

// "10.99.0.1"
std::string HostText(std::uint32_t host);

// Throws std::invalid_argument when the text is not an IPv4 address.
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

  // Binds to this address, after closing an open socket. Port 0 is any free port; another port is shared with programs
  // that share it too. Throws core::RuntimeError with the system's number and description.
  void Open(const Address& here);
  void Close();
  bool IsOpen() const { return handle_ != kNone; }

  // False when the system refuses the datagram; see Failure.
  bool Send(std::string_view bytes, const Address& to);
  const std::string& Failure() const { return failure_; }

  // Waits for a datagram, at most so many milliseconds. False on a timeout, an error or an empty datagram.
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
