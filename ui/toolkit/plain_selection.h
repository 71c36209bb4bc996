// Keeps the selection of a list plain to see while the keyboard is elsewhere: buttons and menus act on it then too, and
// the system shows it so faintly that it can hardly be told on a white list.
#pragma once

#include <windows.h>
#include <commctrl.h>

namespace toolkit {

// For the stage of a list view's custom drawing that comes before an item. The list itself is asked what is selected:
// one that always shows its selection calls every item selected here.
inline void ShowSelectionPlainly(NMLVCUSTOMDRAW& draw) {
  const HWND list = draw.nmcd.hdr.hwndFrom;
  if (::GetFocus() == list || !ListView_GetItemState(list, draw.nmcd.dwItemSpec, LVIS_SELECTED)) return;
  draw.nmcd.uItemState &= ~static_cast<UINT>(CDIS_SELECTED);  // or the list takes the faint colours all the same
  draw.clrText = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
  draw.clrTextBk = ::GetSysColor(COLOR_HIGHLIGHT);
}

}  // namespace toolkit
