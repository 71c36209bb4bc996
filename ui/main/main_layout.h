// The layout of the main window, and its places in the corners. Pure arithmetic.
#pragma once

#include <algorithm>

#include "ui/toolkit/units.h"

namespace mainwindow {

using toolkit::Twips;

constexpr Twips kMinWidth{2000}, kMinHeight{2500};

// Frame and scroll bar, which the two roster columns leave free.
constexpr Twips kColumnMargin{250};

// At the default size the state column is the wider one; a wider window gives the space to the names.
constexpr Twips kMinNameColumn{1185};

constexpr Twips NameColumnWidth(Twips list) {
  return std::max(Twips{(list - kColumnMargin).value / 2}, kMinNameColumn);
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

// The place of a window in a corner of the work area: 0 top left, 1 top right, 2 bottom left, 3 bottom right.
constexpr toolkit::Area CornerPlace(unsigned corner, const toolkit::Area& area, const toolkit::Area& window) {
  const bool right = corner == 1 || corner == 3, bottom = corner >= 2;
  return toolkit::AreaAt(right ? area.right - window.Width() : area.left,
                         bottom ? area.bottom - window.Height() : area.top, window.Width(), window.Height());
}

}  // namespace mainwindow
