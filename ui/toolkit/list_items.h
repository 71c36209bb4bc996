// Extensions of the system's list and tree views: a visible selection, and item texts of any length.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <cstring>
#include <string>

namespace toolkit {

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
