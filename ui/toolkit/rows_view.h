// A list view that displays ListRows and keeps nothing but selection and caret of its own: every text, picture and
// colour is asked for when it is painted.
//
// The control knows rows by their numbers at the last Sync. Rows that have come and gone since are taken into account
// then, and until then it goes by what is on the screen: a click means the row that is drawn there.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <cstdint>
#include <vector>

#include "ui/toolkit/list_rows.h"

namespace toolkit {

class RowsView {
 public:
  // Takes over a report-mode list view control made by the window; the rows must outlive it. Columns are added by
  // AddColumn.
  void Attach(HWND listView, ListRows& rows, HIMAGELIST smallIcons);

  HWND hwnd() const { return hwnd_; }

  void AddColumn(int index, const char* caption, int width);

  // The only column as wide as the list shows, which is less while it has a scroll bar.
  void FitColumn();

  // Brings the control in line with the rows: their number, the selection, the caret, what is on the screen. Costs a
  // comparison when nothing has changed since the last call.
  void Sync();

  // Answers the control's notifications; true when `result` is the answer.
  bool Notify(const NMHDR& header, LPARAM lParam, LRESULT& result);

 private:
  void TakeRows();
  const ListRow* RowAt(std::size_t number) const;
  int NewPlaceOf(int number) const;
  void Display(LVITEMA& item) const;
  LRESULT Paint(NMLVCUSTOMDRAW& draw) const;
  int Find(const NMLVFINDITEMA& search) const;
  void TakeSelection(int first, int last, bool selected);
  void ReadSelection(const NMLISTVIEW& change);
  void ApplySelection();

  HWND hwnd_ = nullptr;
  ListRows* rows_ = nullptr;
  std::vector<RowId> shown_;  // in the control, by number
  std::uint64_t seenSet_ = 0, seenLooks_ = 0;
  bool applying_ = false;  // our own change of the selection comes back as a notification
};

}  // namespace toolkit
