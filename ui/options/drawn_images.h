// Images that the options dialog draws at run time, because they depend on the system's colours and the screen's
// scaling.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>

#include "ui/toolkit/caption.h"
#include "ui/toolkit/handles.h"

namespace options {

// An off-screen bitmap, on which the images of an image list are drawn one after the other. Sizes in pixels.
class Scratch {
 public:
  explicit Scratch(SIZE size);

  // An empty list for `count` images of this size.
  toolkit::ImageList NewList(int count) const;

  // Draws an image and appends it to the list.
  void Add(HIMAGELIST list, const std::function<void(HDC dc, const RECT& whole)>& draw) const;

 private:
  SIZE size_;
  toolkit::MemoryDc dc_;
  toolkit::Bitmap bitmap_;
};

// A swatch: a box filled with a colour, with a border.
void DrawSwatch(HDC dc, const RECT& box, COLORREF colour);

// A screen with one quarter highlighted: 1 top left, 2 top right, 3 bottom left, 4 bottom right.
void DrawPosition(HDC dc, const RECT& screen, int position);

// Their names for screen readers, as the menu calls the corners.
inline constexpr toolkit::Caption kPositionNames[] = {
    {1117, "|Move window to top left|Top &Left"},
    {1118, "|Move window to top right|Top &Right"},
    {1119, "|Move window to bottom left|Bottom L&eft"},
    {1120, "|Move window to bottom right|Bottom R&ight"},
};

}  // namespace options
