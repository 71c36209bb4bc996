// The time of day as text, and the millisecond tick count.
#pragma once

#include <cstdint>
#include <string>

namespace core {

// Short date, one blank, long time, as the user's locale formats them, trimmed.
std::string ClockText();

// The long time text of the user's locale.
std::string TimeText();

// Milliseconds since the system started, wrapping as a signed 32-bit number.
std::int32_t TickCount();

// Milliseconds from one tick count to another, correct across the wrap; very large when the clock went back.
constexpr std::uint32_t TicksSince(std::int32_t then, std::int32_t now) {
  return static_cast<std::uint32_t>(now) - static_cast<std::uint32_t>(then);
}

// The tick count this many milliseconds later.
constexpr std::int32_t TicksAfter(std::int32_t now, std::uint32_t milliseconds) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(now) + milliseconds);
}

}  // namespace core
