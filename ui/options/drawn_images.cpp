#include "ui/options/drawn_images.h"

#include "ui/toolkit/screen.h"

namespace options {
namespace {

using toolkit::operator""_dp;

void Fill(HDC dc, const RECT& place, int systemColour) { ::FillRect(dc, &place, ::GetSysColorBrush(systemColour)); }

RECT QuarterOf(const RECT& whole, int position) {
  const LONG middleX = (whole.left + whole.right) / 2, middleY = (whole.top + whole.bottom) / 2;
  const bool right = position % 2 == 0, bottom = position > 2;
  return {right ? middleX : whole.left, bottom ? middleY : whole.top, right ? whole.right : middleX,
          bottom ? whole.bottom : middleY};
}

}  // namespace

Scratch::Scratch(SIZE size) : size_(size), dc_(::CreateCompatibleDC(nullptr)) {
  const toolkit::WindowDc screen(nullptr);
  bitmap_ = toolkit::Bitmap(::CreateCompatibleBitmap(screen.get(), size.cx, size.cy));
}

toolkit::ImageList Scratch::NewList(int count) const {
  return toolkit::ImageList(::ImageList_Create(size_.cx, size_.cy, ILC_COLOR24, count, 0));
}

void Scratch::Add(HIMAGELIST list, const std::function<void(HDC dc, const RECT& whole)>& draw) const {
  {
    const toolkit::Selected selected(dc_.get(), bitmap_.get());
    draw(dc_.get(), {0, 0, size_.cx, size_.cy});
  }
  ::ImageList_Add(list, bitmap_.get(), nullptr);
}

void DrawSwatch(HDC dc, const RECT& box, COLORREF colour) {
  const toolkit::Brush fill(::CreateSolidBrush(colour));
  ::FillRect(dc, &box, fill.get());
  ::FrameRect(dc, &box, ::GetSysColorBrush(COLOR_BTNSHADOW));
}

void DrawPosition(HDC dc, const RECT& screen, int position) {
  Fill(dc, screen, COLOR_WINDOWTEXT);
  RECT inside = screen;
  const int frame = toolkit::Px(1_dp);
  ::InflateRect(&inside, -frame, -frame);
  Fill(dc, inside, COLOR_HIGHLIGHT);
  Fill(dc, QuarterOf(inside, position), COLOR_HIGHLIGHTTEXT);
}

}  // namespace options
