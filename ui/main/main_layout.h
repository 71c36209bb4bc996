// How the main window lays itself out, and where its corners are. Pure arithmetic.
#pragma once

#include <algorithm>

#include "ui/toolkit/units.h"

namespace mainwindow {

using toolkit::Twips;

constexpr Twips kMinWidth{2000}, kMinHeight{2500};

// What the second roster column leaves free beside the first: frame and scroll bar.
constexpr Twips kColumnMargin{250};

// In a window of the first size the states get the more of the two; a wider one shows longer names.
constexpr Twips kLeastNameColumn{1185};

constexpr Twips NameColumnWidth(Twips list) {
  return std::max(Twips{(list - kColumnMargin).value / 2}, kLeastNameColumn);
}

constexpr Twips StatColumnWidth(Twips list, Twips firstColumn) { return list - firstColumn - kColumnMargin; }

// Heights of the client area from top to bottom, pixels.
struct MainBands {
  int rosterTop, rosterHeight, statusTop;
};

constexpr MainBands BandsOf(int clientHeight, int toolbarHeight, int statusHeight, bool statusVisible) {
  const int bottom = clientHeight - (statusVisible ? statusHeight : 0);
  return {toolbarHeight, std::max(bottom - toolbarHeight, 0), bottom};
}

// A window moved into a corner of the work area, flush with its edges: 0 top left, 1 top right, 2 bottom left, 3 bottom
// right. Any unit, the same for both.
template <class Rect>
constexpr Rect CornerPlace(unsigned corner, const Rect& area, const Rect& window) {
  const auto width = window.right - window.left, height = window.bottom - window.top;
  const bool right = corner == 1 || corner == 3, bottom = corner >= 2;
  Rect place = window;
  place.left = right ? area.right - width : area.left;
  place.top = bottom ? area.bottom - height : area.top;
  place.right = place.left + width;
  place.bottom = place.top + height;
  return place;
}

}  // namespace mainwindow
