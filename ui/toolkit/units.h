// Lengths and rectangles. Stored and designed lengths are twips (1/1440 inch). Pixels are plain numbers, as in Windows;
// numbers do not convert to twips implicitly, so nothing is converted twice.
#pragma once

#include <algorithm>
#include <compare>
#include <cstdint>
#include <type_traits>

namespace toolkit {

struct Twips {
  std::int32_t value = 0;
  // NOLINTNEXTLINE(modernize-use-nullptr): the check takes the 0 of a comparison's result for a pointer
  friend constexpr auto operator<=>(Twips, Twips) = default;
  friend constexpr Twips operator+(Twips a, Twips b) { return {a.value + b.value}; }
  friend constexpr Twips operator-(Twips a, Twips b) { return {a.value - b.value}; }
  friend constexpr Twips operator*(std::int32_t count, Twips length) { return {count * length.value}; }
};

static_assert(!std::is_convertible_v<int, Twips>);

struct ScreenSize {
  Twips width, height;
};

// The work area of the screen.
struct WorkArea {
  Twips left, top, right, bottom;
};

// Dots per inch of the screen: 96 at 100 %, 192 at 200 %.
struct Dpi {
  std::int32_t value = 96;
};

constexpr int kTwipsPerInch = 1440, kDesignDpi = 96;

// A length that was designed in the pixels of a 96 dpi screen.
constexpr Twips DesignPixels(std::int32_t pixels) { return {pixels * (kTwipsPerInch / kDesignDpi)}; }
constexpr Twips operator""_dp(unsigned long long pixels) { return DesignPixels(static_cast<std::int32_t>(pixels)); }

// Rounds half away from zero, like ::MulDiv. Convert the edges of a rectangle, never its width, so that neighbours meet
// without a gap.
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

// A rectangle of a layout, pixels.
struct Area {
  int left = 0, top = 0, right = 0, bottom = 0;
  friend constexpr bool operator==(const Area&, const Area&) = default;
  constexpr int Width() const { return right - left; }
  constexpr int Height() const { return bottom - top; }
};

constexpr Area AreaAt(int left, int top, int width, int height) { return {left, top, left + width, top + height}; }

// An area of this size centred in another one, but never beyond its left and top edges.
constexpr Area CentredIn(const Area& area, int width, int height) {
  return AreaAt(area.left + std::max((area.Width() - width) / 2, 0),
                area.top + std::max((area.Height() - height) / 2, 0), width, height);
}

}  // namespace toolkit
