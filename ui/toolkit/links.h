// Opening links.
#pragma once

#include <windows.h>
#include <shellapi.h>

#include <string>

namespace toolkit {

using ShellOpen = HINSTANCE(WINAPI*)(HWND owner, const char* verb, const char* file, const char* parameters,
                                     const char* directory, int show);

// Opens a web or mail link with the user's default program. Reports a failure in a message box; never throws, and
// restores the mouse pointer.
void OpenLink(const std::string& link, ShellOpen shell = ::ShellExecuteA);

}  // namespace toolkit
