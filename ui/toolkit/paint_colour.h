// Converts a stored colour for painting: 0x800000nn is a system colour, of others the low 24 bits are used
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

// The same for text on a window. Black, which is the default colour of names, becomes the theme's text colour: it would
// be unreadable on the black windows of a high-contrast theme.
inline COLORREF TextColour(std::int32_t colour) {
  return colour == 0 ? ::GetSysColor(COLOR_WINDOWTEXT) : PaintColour(colour);
}

}  // namespace toolkit
