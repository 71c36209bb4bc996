// Extensions of the system's text boxes: a limit in bytes, and the keys of a multi-line text box in a window with
// dialog keys. There the system's box inserts Tab, closes the window on Escape, and has no key for Select All.
#pragma once

#include <windows.h>

#include <cstddef>

namespace toolkit {

// Limits what can be typed and pasted to this many bytes. The system's own limit counts characters, and that many
// double-byte characters may not fit into a datagram. Texts that the program sets are not limited.
void LimitBytes(HWND box, std::size_t bytes);

// Handles a WM_KEYDOWN of a multi-line text box: Tab moves the focus, Ctrl+A selects all, Escape is ignored. True when
// the key was handled.
bool TranslateTextKey(const MSG& key);

// Keeps the selection when the box gets the focus by Tab: with everything selected the next key would replace the text.
void KeepSelectionAtTab(HWND textBox);

// The same for a box with its own procedure: adjusts the system's result of a message.
inline LRESULT WithoutSelecting(UINT message, LRESULT answer) {
  return message == WM_GETDLGCODE ? answer & ~LRESULT{DLGC_HASSETSEL} : answer;
}

}  // namespace toolkit
