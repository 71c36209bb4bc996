#include "ui/toolkit/rows_view.h"

#include <algorithm>

#include "core/scoped_flag.h"
#include "core/text.h"
#include "ui/toolkit/controls.h"
#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

constexpr LPARAM kWholeList = -1;

LVITEMA StateOf(bool selected) {
  LVITEMA item{};
  item.stateMask = LVIS_SELECTED;
  item.state = selected ? LVIS_SELECTED : 0u;
  return item;
}

// Suppresses the horizontal scroll bar that appears when a vertical one narrows the client area. Truncated texts have
// tool-tips.
LRESULT CALLBACK NoHorizontalScroll(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
  if (message == WM_NCCALCSIZE) {
    const LONG_PTR style = ::GetWindowLongPtrA(list, GWL_STYLE);
    if (style & WS_HSCROLL) ::SetWindowLongPtrA(list, GWL_STYLE, style & ~LONG_PTR{WS_HSCROLL});
  }
  if (message == WM_NCDESTROY) ::RemoveWindowSubclass(list, NoHorizontalScroll, id);
  return ::DefSubclassProc(list, message, wParam, lParam);
}

}  // namespace

void RowsView::Attach(HWND listView, ListRows& rows, HIMAGELIST smallIcons) {
  hwnd_ = listView;
  rows_ = &rows;
  // LVS_SHAREIMAGELISTS: the pictures are shared by all windows.
  ::SetWindowLongPtrA(hwnd_, GWL_STYLE, ::GetWindowLongPtrA(hwnd_, GWL_STYLE) | LVS_SHAREIMAGELISTS);
  ::SetWindowSubclass(hwnd_, NoHorizontalScroll, 1, 0);
  ListView_SetExtendedListViewStyle(hwnd_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
  ListView_SetImageList(hwnd_, smallIcons, LVSIL_SMALL);
  Sync();
}

void RowsView::AddColumn(int index, const char* caption, int width) {
  LVCOLUMNA column{};
  column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
  column.cx = width;
  column.iSubItem = index;
  column.pszText = const_cast<char*>(caption);  // the control copies it
  ::SendMessageA(hwnd_, LVM_INSERTCOLUMNA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

void RowsView::FitColumn() { ListView_SetColumnWidth(hwnd_, 0, ClientAreaOf(hwnd_).right); }

void RowsView::Sync() {
  if (rows_->MembershipRevision() != shownMembership_) {
    TakeRows();
  } else if (rows_->AppearanceRevision() == shownAppearance_) {
    return;
  }
  shownAppearance_ = rows_->AppearanceRevision();
  ::InvalidateRect(hwnd_, nullptr, FALSE);
}

// Selection, caret and selection mark stay with their rows.
void RowsView::TakeRows() {
  const core::ScopedFlag applying(applying_);
  const int caret = ListView_GetNextItem(hwnd_, -1, LVNI_FOCUSED), mark = ListView_GetSelectionMark(hwnd_);
  const int newCaret = NewIndexOf(caret), newMark = NewIndexOf(mark);
  shown_ = rows_->Ids();
  shownMembership_ = rows_->MembershipRevision();
  ListView_SetItemCountEx(hwnd_, static_cast<int>(shown_.size()), LVSICF_NOSCROLL | LVSICF_NOINVALIDATEALL);
  ApplySelection();
  if (newCaret >= 0) ListView_SetItemState(hwnd_, newCaret, LVIS_FOCUSED, LVIS_FOCUSED);
  if (newMark >= 0) ListView_SetSelectionMark(hwnd_, newMark);
}

// The current index of a row that is shown; that of the next one, or of the last, if it was removed.
int RowsView::NewIndexOf(int number) const {
  if (number < 0 || static_cast<std::size_t>(number) >= shown_.size()) return -1;
  return static_cast<int>(std::min(rows_->IndexOf(shown_[static_cast<std::size_t>(number)]) + 1, rows_->Count())) - 1;
}

// Null when it was removed since.
const ListRow* RowsView::RowAt(std::size_t number) const {
  if (number >= shown_.size()) return nullptr;
  return shownMembership_ == rows_->MembershipRevision() ? &rows_->At(number) : rows_->FindId(shown_[number]);
}

// Skipped when nothing is selected, because clearing takes time linear in the rows.
void RowsView::ApplySelection() {
  if (rows_->SelectedCount() == 0 && ListView_GetSelectedCount(hwnd_) == 0) return;
  LVITEMA item = StateOf(false);
  ::SendMessageA(hwnd_, LVM_SETITEMSTATE, static_cast<WPARAM>(kWholeList), reinterpret_cast<LPARAM>(&item));
  item = StateOf(true);
  std::size_t left = rows_->SelectedCount();
  for (std::size_t i = 0; left > 0 && i < rows_->Count(); ++i) {
    if (!rows_->At(i).selected) continue;
    ::SendMessageA(hwnd_, LVM_SETITEMSTATE, i, reinterpret_cast<LPARAM>(&item));
    --left;
  }
}

bool RowsView::Notify(const NMHDR& header, LPARAM lParam, LRESULT& result) {
  if (header.hwndFrom != hwnd_) return false;
  result = 0;
  switch (header.code) {
    case LVN_GETDISPINFOA:
      Display(reinterpret_cast<NMLVDISPINFOA*>(lParam)->item);
      return true;
    case NM_CUSTOMDRAW:
      result = Paint(*reinterpret_cast<NMLVCUSTOMDRAW*>(lParam));
      return true;
    case LVN_ODFINDITEMA:
      result = Find(*reinterpret_cast<const NMLVFINDITEMA*>(lParam));
      return true;
    case LVN_ITEMCHANGED:
      ReadSelection(*reinterpret_cast<const NMLISTVIEW*>(lParam));
      return true;
    case LVN_ODSTATECHANGED: {
      const auto& range = *reinterpret_cast<const NMLVODSTATECHANGE*>(lParam);
      TakeSelection(range.iFrom, range.iTo, (range.uNewState & LVIS_SELECTED) != 0);
      return true;
    }
    default:
      return false;
  }
}

void RowsView::Display(LVITEMA& item) const {
  const ListRow* row = RowAt(static_cast<std::size_t>(item.iItem));
  if (!row) return;
  if (item.mask & LVIF_IMAGE) item.iImage = row->smallIcon - 1;  // icons are counted from 1, pictures from 0
  if (!(item.mask & LVIF_TEXT) || item.cchTextMax <= 0) return;
  const std::string& text = item.iSubItem == 0 ? row->text : row->subText;
  const std::string_view shown = core::LeadingCharacters(text, static_cast<std::size_t>(item.cchTextMax) - 1);
  *std::ranges::copy(shown, item.pszText).out = '\0';
}

LRESULT RowsView::Paint(NMLVCUSTOMDRAW& draw) const {
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  const ListRow* row = draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT ? RowAt(draw.nmcd.dwItemSpec) : nullptr;
  if (!row) return CDRF_DODEFAULT;
  draw.clrText = TextColour(row->foreColour);
  DrawSelectionFocused(draw);
  return CDRF_DODEFAULT;
}

// Incremental search: typing the first letters of a name selects its row.
int RowsView::Find(const NMLVFINDITEMA& search) const {
  const auto count = shown_.size();
  if (!(search.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) || count == 0) return -1;
  const std::string wanted = core::LowerCase(search.lvfi.psz);
  const auto start = static_cast<std::size_t>(std::max(search.iStart, 0));
  for (std::size_t step = 0; step < count; ++step) {
    const std::size_t index = (start + step) % count;
    const ListRow* row = RowAt(index);
    if (row && core::EqualIgnoringCase(std::string_view(row->text).substr(0, wanted.size()), wanted))
      return static_cast<int>(index);
  }
  return -1;
}

// Item -1 means all items.
void RowsView::ReadSelection(const NMLISTVIEW& change) {
  if (!(change.uChanged & LVIF_STATE) || !((change.uOldState ^ change.uNewState) & LVIS_SELECTED)) return;
  const int last = change.iItem < 0 ? static_cast<int>(shown_.size()) - 1 : change.iItem;
  TakeSelection(std::max(change.iItem, 0), last, (change.uNewState & LVIS_SELECTED) != 0);
}

void RowsView::TakeSelection(int first, int last, bool selected) {
  if (applying_) return;
  for (int i = first; i <= last; ++i)
    if (const ListRow* row = RowAt(static_cast<std::size_t>(i))) rows_->SetSelected(*row, selected);
}

}  // namespace toolkit
