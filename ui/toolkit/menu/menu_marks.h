// Check and option marks of menu items.
#pragma once

#include <windows.h>

namespace toolkit {

// A raised box or circle from layered glyphs, each in a system colour of its own, with the mark on top.
void DrawComplexMark(HDC dc, const RECT& box, bool checkBox);

// The system's own mark in a sunken frame, in the given colour.
void DrawFramedMark(HDC dc, const RECT& box, bool checkBox, COLORREF colour);

}  // namespace toolkit
