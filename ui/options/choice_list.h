// A list view of one column from which one row is chosen.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <string>
#include <vector>

namespace options {

class ChoiceList {
 public:
  // The style of the list view to attach.
  static constexpr DWORD kStyle = LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_TABSTOP;

  void Attach(HWND listView, HIMAGELIST pictures);

  HWND hwnd() const { return hwnd_; }

  // The answer to a WM_NOTIFY of the window around it.
  LRESULT Notified(NMHDR& header) const;

  void Clear() { ListView_DeleteAllItems(hwnd_); }
  void Add(const std::string& text, int picture);
  void Remove(int index) { ListView_DeleteItem(hwnd_, index); }
  int Count() const { return ListView_GetItemCount(hwnd_); }

  // Counted from 0; -1 is none.
  int Selected() const { return ListView_GetNextItem(hwnd_, -1, LVNI_SELECTED); }

  // Selects a row and scrolls it into view.
  void Select(int index);

  // Whole, whatever its length: a name that is heard may fill a datagram.
  std::string TextAt(int index) const;
  void SetText(int index, const std::string& text);
  std::vector<std::string> Texts() const;

  // The column takes the width of the list; to be called after the list has its place or other rows.
  void FitColumn();

 private:
  HWND hwnd_ = nullptr;
};

}  // namespace options
