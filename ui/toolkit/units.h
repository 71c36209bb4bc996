// Lengths. Everything that is stored, compared or documented is in twips (1/1440 inch); a pixel exists only at
// the call that places something on a screen of a known resolution.
#pragma once

#include <compare>
#include <cstdint>

namespace toolkit {

struct Twips {
  std::int32_t value = 0;
  friend constexpr auto operator<=>(Twips, Twips) = default;
  friend constexpr Twips operator+(Twips a, Twips b) { return {a.value + b.value}; }
  friend constexpr Twips operator-(Twips a, Twips b) { return {a.value - b.value}; }
};

// The part of the screen that the task bar leaves free.
struct WorkArea {
  Twips left, top, right, bottom;
};

// Dots per inch of the screen that a window stands on: 96 at 100 %, 192 at 200 %.
struct Dpi {
  std::int32_t value = 96;
};

constexpr int kTwipsPerInch = 1440;

// Rounds half away from zero, as ::MulDiv does, so that both give the same pixel.
// Convert the edges of a rectangle, never its width: neighbours then meet without a gap.
constexpr int ToPixels(Twips length, Dpi dpi) {
  const std::int64_t scaled = std::int64_t{length.value} * dpi.value;
  const std::int64_t half = scaled < 0 ? -kTwipsPerInch / 2 : kTwipsPerInch / 2;
  return static_cast<int>((scaled + half) / kTwipsPerInch);
}

// Exact at 96, 120, 144 and 192 dots per inch, where a pixel is a whole number of twips or a half.
constexpr Twips ToTwips(int pixels, Dpi dpi) {
  const std::int64_t scaled = std::int64_t{pixels} * kTwipsPerInch;
  const std::int64_t half = scaled < 0 ? -dpi.value / 2 : dpi.value / 2;
  return {static_cast<std::int32_t>((scaled + half) / dpi.value)};
}

// A design length, given in pixels of a 96 dpi screen, on a screen of another resolution.
constexpr int Scale(int designPixels, Dpi dpi) { return ToPixels({designPixels * 15}, dpi); }

}  // namespace toolkit
