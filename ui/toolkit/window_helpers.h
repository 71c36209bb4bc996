// Small things that windows ask of the system: opening a link, staying on top, playing a sound, the work area.
#pragma once

#include <windows.h>
#include <shellapi.h>

#include <string>

#include "core/sound_win32.h"
#include "ui/toolkit/work_area.h"

namespace toolkit {

using ShellOpen = HINSTANCE(WINAPI*)(HWND owner, const char* verb, const char* file, const char* parameters,
                                     const char* directory, int show);

// Opens a web or mail link with the user's default program. A link that cannot be opened is told in a box; nothing is
// thrown, and the pointer is put back in any case.
void OpenLink(const std::string& link, ShellOpen shell = ::ShellExecuteA);

// Loads the system's lists, trees, toolbars and links: before the first of them is created.
void LoadCommonControls();

void SetTopMost(HWND window, bool onTop);

using core::PlaySnd;

// Takes the last item, Close, off the window's system menu.
void RemoveCloseItem(HWND window);

// The desktop without the task bar in twips of the window's screen; the whole screen when the system does not tell it.
WorkArea GetWorkArea(HWND window);

}  // namespace toolkit
