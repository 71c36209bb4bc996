#include "core/name_hash.h"

#include <chrono>
#include <cstdint>

#include "core/code_page.h"

namespace core {
namespace {

constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15u;  // odd, with well-spread bits

// The clock and the place where the system loaded this program: enough that nobody on the network knows it.
const std::uint64_t kSeed = (static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^
                             reinterpret_cast<std::uintptr_t>(&kSeed)) *
                            kGoldenRatio;

}  // namespace

std::size_t NameHash::operator()(std::string_view name) const {
  const CodePage& page = SystemCodePage();
  std::uint64_t hash = kSeed;
  const auto add = [&hash](Letter folded) {
    hash = (hash ^ folded) * kGoldenRatio;
    // Or the low byte would depend on a few bits of the seed only, and collisions could be computed.
    hash ^= hash >> 32;
  };
  if (page.HasPairs()) {
    while (!name.empty()) add(page.TakeLower(name));
  } else {
    for (const char byte : name) add(page.lower[ByteOf(byte)]);
  }
  return static_cast<std::size_t>(hash);
}

}  // namespace core
