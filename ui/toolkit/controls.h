// Extensions of the system's controls: text boxes, lists and trees.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <cstddef>
#include <cstring>
#include <string>

namespace toolkit {

// Limits what can be typed and pasted to this many bytes. The system's own limit counts characters, and that many
// double-byte characters may not fit into a datagram. Texts that the program sets are not limited.
void LimitBytes(HWND edit, std::size_t bytes);

// Handles a WM_KEYDOWN of a multi-line text box in a window with dialog keys: Tab moves the focus, Ctrl+A selects all,
// Escape is ignored. The system's box would insert Tab, close the window on Escape, and has no key for Select All. True
// when the key was handled.
bool TranslateTextKey(const MSG& key);

// Keeps the selection when the box gets the focus by Tab: with everything selected the next key would replace the text.
void KeepSelectionAtTab(HWND textBox);

// The same for a box with its own procedure: adjusts the system's result of a message.
inline LRESULT WithoutSelecting(UINT message, LRESULT answer) {
  return message == WM_GETDLGCODE ? answer & ~LRESULT{DLGC_HASSETSEL} : answer;
}

// Keeps the selection visible while the list has no focus: buttons and menus act on it then too, and the system's
// colour for it is hardly visible on a white list.
//
// For the CDDS_ITEMPREPAINT stage of a list view. It queries the selection from the list, because a list with
// LVS_SHOWSELALWAYS marks every item as selected here.
inline void DrawSelectionFocused(NMLVCUSTOMDRAW& draw) {
  const HWND list = draw.nmcd.hdr.hwndFrom;
  if (::GetFocus() == list || !ListView_GetItemState(list, draw.nmcd.dwItemSpec, LVIS_SELECTED)) return;
  draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);  // otherwise the list still uses the pale colours
  draw.clrText = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
  draw.clrTextBk = ::GetSysColor(COLOR_HIGHLIGHT);
}

// The whole text of an item: a name from the network may be as long as a datagram, and these controls truncate the text
// to the buffer without telling its length. `copy(buffer, size)` makes the control copy it; size includes the
// terminating NUL.
template <class Copy>
std::string ItemText(Copy copy) {
  constexpr std::size_t usual = 256;
  for (std::size_t size = usual;; size *= 2) {
    std::string text(size, '\0');
    copy(text.data(), static_cast<int>(size));
    text.resize(std::strlen(text.c_str()));   // a truncated text need not be terminated
    if (text.size() + 2 < size) return text;  // not truncated: even a double-byte character would have fit
  }
}

}  // namespace toolkit
