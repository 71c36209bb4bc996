// The millisecond clock that start-up waits by.
#pragma once

#include <cstdint>

namespace core {

// Stores the current tick count in gTicks.
void StartTicks();

// Milliseconds since `start`. Throws Err::Overflow when the difference leaves the signed 32-bit range, which happens
// once, 24.8 days after the system started.
std::int32_t ElapsedTicks(std::int32_t start);

// The checked subtraction behind it.
std::int32_t TicksBetween(std::int32_t start, std::int32_t now);

}  // namespace core
