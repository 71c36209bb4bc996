// The screen that everything is placed on: its resolution, its size, and the fonts of the system's dialogs.
#pragma once

#include <windows.h>

#include <string_view>

#include "ui/toolkit/area.h"
#include "ui/toolkit/units.h"

namespace toolkit {

// The program is system DPI aware: one resolution for the whole run, the one that was set at logon.
Dpi ScreenDpi();

// Twips to pixels of the screen, and back.
inline int Px(Twips length) { return ToPixels(length, ScreenDpi()); }
inline Twips Tw(int pixels) { return ToTwips(pixels, ScreenDpi()); }

struct ScreenSize {
  Twips width, height;
};

// The whole primary screen, the task bar included.
ScreenSize WholeScreen();

// The desktop without the task bar, pixels; the whole screen when the system does not tell it.
Area WorkAreaPixels();

// The same in twips of the window's screen.
WorkArea GetWorkArea(HWND window);

// Of a window, on the screen or, for its inside, from its own corner; pixels.
Area AreaOf(HWND window);
Area ClientAreaOf(HWND window);

RECT RectOf(const Area& area);

// Moves a window to a place on the screen, a control to one inside its window. Nothing of the old picture is kept: a
// copied frame would show gaps on some desktops.
void SetArea(HWND window, const Area& area);

// The font of the system's own messages and dialogs. Owned by the module, valid for the whole run.
HFONT DialogFont();
HFONT BoldDialogFont();

// Pixel size of a single line of text in a font.
SIZE MeasureText(HFONT font, std::string_view text);
SIZE MeasureText(HDC dc, std::string_view text);

}  // namespace toolkit
