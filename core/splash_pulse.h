// The pulse of the splash window's dot: red to green and back while the program listens.
#pragma once

#include <algorithm>

namespace core {

struct DotColour {
  int red, green;  // 0 to 255; blue is always 0
};

// The counter of the next tick: 0, 5, ... 200, then 0 again.
constexpr int NextPulse(int counter) { return counter + 5 > 200 ? 0 : counter + 5; }

// 2.56 per step of a triangle wave 0 to 100 and back, rounded; a full 256 counts as 255.
constexpr DotColour PulseColour(int counter) {
  const int wave = counter > 100 ? 200 - counter : counter;
  const auto channel = [](int step) { return std::min((256 * step + 50) / 100, 255); };
  return {channel(100 - wave), channel(wave)};
}

}  // namespace core
