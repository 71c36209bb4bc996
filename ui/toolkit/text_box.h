// What the system's text boxes lack: a limit in bytes, and the keyboard of a box of several lines in a window that
// answers the keys of a dialog. There such a box eats Tab, asks the window to close at Escape, and has no key for
// selecting everything.
#pragma once

#include <windows.h>

#include <cstddef>

namespace toolkit {

// Lets a box take so many bytes and no more. The system's own limit counts letters, and on systems whose letters have
// two bytes a text of that many letters may not fit a datagram.
// Holds for what is typed and pasted, not for texts that the program sets.
void LimitBytes(HWND box, std::size_t bytes);

// Tab leads on, Ctrl+A selects everything, Escape does nothing. For a WM_KEYDOWN that is meant for such a box; true
// when it is used up.
bool TranslateTextKey(const MSG& key);

// Coming by Tab leaves the selection alone: with everything selected the next key would replace it.
void KeepSelectionAtTab(HWND textBox);

// The same for a box with a procedure of its own: what it answers to a message that the system answers like this.
inline LRESULT WithoutSelecting(UINT message, LRESULT answer) {
  return message == WM_GETDLGCODE ? answer & ~LRESULT{DLGC_HASSETSEL} : answer;
}

}  // namespace toolkit
