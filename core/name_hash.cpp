#include "core/name_hash.h"

#include <chrono>
#include <cstdint>

#include "core/ansi_case.h"

namespace core {
namespace {

constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15u;  // odd, with well-spread bits

// The clock and the place where the system loaded this program: enough that nobody on the network knows it.
const std::uint64_t kSeed = (static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^
                             reinterpret_cast<std::uintptr_t>(&kSeed)) *
                            kGoldenRatio;

}  // namespace

std::size_t NameHash::operator()(std::string_view name) const {
  const CaseTable& lower = LowerCaseTable();
  std::uint64_t hash = kSeed;
  for (const char byte : name) {
    const auto folded = static_cast<unsigned char>(lower[static_cast<unsigned char>(byte)]);
    hash = (hash ^ folded) * kGoldenRatio;
    // Or the low byte would depend on a few bits of the seed only, and collisions could be computed.
    hash ^= hash >> 32;
  }
  return static_cast<std::size_t>(hash);
}

}  // namespace core
