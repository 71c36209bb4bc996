// A rectangle of a layout, pixels.
#pragma once

#include <algorithm>

namespace toolkit {

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
