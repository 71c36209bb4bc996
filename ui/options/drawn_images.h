// The images of the options dialog that are drawn by the program itself, because they show colours and places of the
// user's own system.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>

#include "ui/toolkit/caption.h"
#include "ui/toolkit/handles.h"

namespace options {

// A surface on which an image is drawn and from which it goes into an image list. Pixels.
class Scratch {
 public:
  explicit Scratch(SIZE size);

  // An empty image list for images of this surface.
  toolkit::ImageList NewList(int room) const;

  // Draws, and adds the outcome to the list.
  void Add(HIMAGELIST list, const std::function<void(HDC dc, const RECT& whole)>& draw) const;

 private:
  SIZE size_;
  toolkit::MemoryDc dc_;
  toolkit::Bitmap bitmap_;
};

// A swatch: a bordered box full of a colour.
void DrawSwatch(HDC dc, const RECT& box, COLORREF colour);

// A screen with one quarter of it lit: 1 top left, 2 top right, 3 bottom left, 4 bottom right.
void DrawPosition(HDC dc, const RECT& screen, int position);

// Their names for screen readers, as the menu calls the corners.
inline constexpr toolkit::Caption kPositionNames[] = {
    {1117, "|Move window to top left|Top &Left"},
    {1118, "|Move window to top right|Top &Right"},
    {1119, "|Move window to bottom left|Bottom L&eft"},
    {1120, "|Move window to bottom right|Bottom R&ight"},
};

// The place of that quarter, which has half the width and half the height of the whole.
constexpr RECT QuarterOf(const RECT& whole, int position) {
  const LONG middleX = (whole.left + whole.right) / 2, middleY = (whole.top + whole.bottom) / 2;
  const bool right = position % 2 == 0, bottom = position > 2;
  return {right ? middleX : whole.left, bottom ? middleY : whole.top, right ? whole.right : middleX,
          bottom ? whole.bottom : middleY};
}

}  // namespace options
