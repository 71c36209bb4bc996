// What every fuzz target defines and both drivers, libFuzzer and the replay of the corpus, call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Stops at the input that breaks a promise.
inline void Require(bool promise) {
  if (!promise) std::abort();
}

}  // namespace fuzz
