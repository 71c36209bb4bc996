// A stored colour as it is painted: 0x800000nn names a system colour, of anything else the low 24 bits count
// (0x00BBGGRR).
#pragma once

#include <windows.h>

#include <cstdint>

namespace toolkit {

inline COLORREF PaintColour(std::int32_t colour) {
  const auto bits = static_cast<std::uint32_t>(colour);
  if ((bits & 0x80000000u) != 0) return ::GetSysColor(static_cast<int>(bits & 0xFFu));
  return bits & 0x00FFFFFFu;
}

// The same for text on a window. Black, the colour of whoever has chosen none, follows the theme: on the black windows
// of a high-contrast theme it could not be read.
inline COLORREF TextColour(std::int32_t colour) {
  return colour == 0 ? ::GetSysColor(COLOR_WINDOWTEXT) : PaintColour(colour);
}

}  // namespace toolkit
