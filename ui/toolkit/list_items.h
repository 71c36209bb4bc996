// What the system's lists and trees lack for their items.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <cstring>
#include <string>

namespace toolkit {

// Keeps the selection of a list plain to see while the keyboard is elsewhere: buttons and menus act on it then too, and
// the system shows it so faintly that it can hardly be told on a white list.
//
// For the stage of a list view's custom drawing that comes before an item. The list itself is asked what is selected:
// one that always shows its selection calls every item selected here.
inline void ShowSelectionPlainly(NMLVCUSTOMDRAW& draw) {
  const HWND list = draw.nmcd.hdr.hwndFrom;
  if (::GetFocus() == list || !ListView_GetItemState(list, draw.nmcd.dwItemSpec, LVIS_SELECTED)) return;
  draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);  // or the list takes the faint colours all the same
  draw.clrText = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
  draw.clrTextBk = ::GetSysColor(COLOR_HIGHLIGHT);
}

// The text of an item, whole, whatever its length: a name that is heard may fill a datagram. Such controls copy as much
// as fits and do not tell how much there is.
// `copy(buffer, size)` lets the control copy the text, its closing zero counted.
template <class Copy>
std::string ItemText(Copy copy) {
  constexpr std::size_t usual = 256;
  for (std::size_t size = usual;; size *= 2) {
    std::string text(size, '\0');
    copy(text.data(), static_cast<int>(size));
    text.resize(std::strlen(text.c_str()));   // a text that does not fit need not be ended
    if (text.size() + 2 < size) return text;  // there was room for another letter, of two bytes perhaps
  }
}

}  // namespace toolkit
