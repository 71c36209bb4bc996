// The screen: its resolution and size, the fonts of the system's dialogs, and colours for painting.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string_view>

#include "core/program.h"
#include "ui/toolkit/units.h"

namespace toolkit {

// The program is system DPI aware: the resolution is that of the logon, for the whole run.
Dpi ScreenDpi();

// Twips to pixels of the screen, and back.
inline int Px(Twips length) { return ToPixels(length, ScreenDpi()); }
inline Twips Tw(int pixels) { return ToTwips(pixels, ScreenDpi()); }

// A rectangle in pixels of the screen.
inline Area Px(Twips left, Twips top, Twips width, Twips height) {
  return {Px(left), Px(top), Px(left + width), Px(top + height)};
}

// The whole primary screen, including the task bar.
ScreenSize WholeScreen();

// The work area in pixels; the whole screen when the system call fails.
Area WorkAreaPixels();

// The same in twips.
WorkArea GetWorkArea(HWND window);

// The window rectangle in screen coordinates, and the client area in client coordinates; pixels.
Area AreaOf(HWND window);
Area ClientAreaOf(HWND window);

// The window rectangle as settings keep it, and the rectangle of such bounds in pixels.
core::WindowBounds BoundsOf(HWND window);
Area AreaOf(const core::WindowBounds& bounds);

RECT RectOf(const Area& area);

// The same place, or the nearest one in the work area of the nearest screen when it is off every screen: a screen was
// removed or became smaller.
Area Reachable(const Area& place);

// Moves a window on the screen, or a control in its window, and repaints it fully: in Wine copied frames have gaps.
void SetArea(HWND window, const Area& area);

// The font of the system's message boxes and dialogs, valid for the whole run.
HFONT DialogFont();
HFONT BoldDialogFont();

// Draws the text of a control in the bold dialog font.
void SetBold(HWND control);

// The character set of fonts that have the characters of the system's ANSI code page, such as SHIFTJIS_CHARSET.
int SystemCharset();

// The height of a line in the dialog font, pixels.
int LineHeight();

// The size of a single line of text, pixels.
SIZE MeasureText(HFONT font, std::string_view text);
SIZE MeasureText(HDC dc, std::string_view text);

// Converts a stored colour for painting: 0x800000nn is a system colour, of others the low 24 bits are used
// (0x00BBGGRR).
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
