// A rectangle of a layout, pixels.
#pragma once

namespace conversation {

struct Area {
  int left = 0, top = 0, right = 0, bottom = 0;
  friend constexpr bool operator==(const Area&, const Area&) = default;
  constexpr int Width() const { return right - left; }
  constexpr int Height() const { return bottom - top; }
};

}  // namespace conversation
