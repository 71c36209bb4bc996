// IPv4 addresses.
#pragma once

#include <cstdint>
#include <string>

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

}  // namespace wire
