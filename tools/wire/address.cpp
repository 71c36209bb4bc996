#include "tools/wire/address.h"

#include <charconv>
#include <stdexcept>

namespace wire {

std::string HostText(std::uint32_t host) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) text += std::to_string(host >> shift & 0xFF) + '.';
  text.pop_back();
  return text;
}

// Only what HostText writes is an address: some systems take "010" as octal and others as ten, or "10.1" as 10.0.0.1.
std::uint32_t ParseHost(const std::string& text) {
  std::uint32_t host = 0;
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at < end) {
    std::uint8_t part = 0;
    at = std::from_chars(at, end, part).ptr;
    host = host << 8 | part;
    if (at < end) ++at;
  }
  if (HostText(host) != text) throw std::invalid_argument(text + " is not an IPv4 address");
  return host;
}

}  // namespace wire
