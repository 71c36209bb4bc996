// A list view with one column, in which one row can be selected.
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

  // The result of a WM_NOTIFY that the parent window received; 0 when it came from another control.
  LRESULT OnNotify(NMHDR& header) const;

  void Clear() { ListView_DeleteAllItems(hwnd_); }
  void Add(const std::string& text, int picture);
  void Remove(int index) { ListView_DeleteItem(hwnd_, index); }
  int Count() const { return ListView_GetItemCount(hwnd_); }

  // Index of the selected row, -1 when there is none.
  int Selected() const { return ListView_GetNextItem(hwnd_, -1, LVNI_SELECTED); }

  // Selects a row and scrolls it into view.
  void Select(int index);

  // Of any length: a name from the network may fill a datagram.
  std::string TextAt(int index) const;
  void SetText(int index, const std::string& text);
  std::vector<std::string> Texts() const;

  // Makes the column as wide as the list. Call it after the list was resized or rows were added or removed, which may
  // show or hide the scroll bar.
  void FitColumn();

 private:
  HWND hwnd_ = nullptr;
};

}  // namespace options
