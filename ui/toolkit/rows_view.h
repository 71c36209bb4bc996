// A virtual list view of ListRows. It keeps only selection and caret; texts, pictures and colours are queried when they
// are painted.
//
// The control refers to rows by their indices at the last Sync. Until the next one it acts on what is on the screen: a
// click means the row that is drawn there.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <cstdint>
#include <vector>

#include "ui/toolkit/list_rows.h"

namespace toolkit {

class RowsView {
 public:
  // Attaches to a report-mode list view created by the window; the rows must outlive it. Add columns with AddColumn.
  void Attach(HWND listView, ListRows& rows, HIMAGELIST smallIcons);

  HWND hwnd() const { return hwnd_; }

  void AddColumn(int index, const char* caption, int width);

  // Makes the only column as wide as the list, less the scroll bar while there is one.
  void FitColumn();

  // Updates the control: number of rows, selection, caret, and what is on the screen. Only compares counters when
  // nothing has changed since the last call.
  void Sync();

  // Handles the control's notifications; true when `result` is to be returned.
  bool Notify(const NMHDR& header, LPARAM lParam, LRESULT& result);

 private:
  void TakeRows();
  const ListRow* RowAt(std::size_t number) const;
  int NewIndexOf(int number) const;
  void Display(LVITEMA& item) const;
  LRESULT Paint(NMLVCUSTOMDRAW& draw) const;
  int Find(const NMLVFINDITEMA& search) const;
  void TakeSelection(int first, int last, bool selected);
  void ReadSelection(const NMLISTVIEW& change);
  void ApplySelection();

  HWND hwnd_ = nullptr;
  ListRows* rows_ = nullptr;
  std::vector<RowId> shown_;  // in the control, by index
  std::uint64_t shownMembership_ = 0, shownAppearance_ = 0;
  bool applying_ = false;  // the notification is of our own change of the selection
};

}  // namespace toolkit
