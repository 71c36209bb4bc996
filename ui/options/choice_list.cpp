#include "ui/options/choice_list.h"

#include "ui/toolkit/list_items.h"
#include "ui/toolkit/screen.h"

namespace options {

void ChoiceList::Attach(HWND listView, HIMAGELIST pictures) {
  hwnd_ = listView;
  ListView_SetExtendedListViewStyle(hwnd_, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
  ListView_SetImageList(hwnd_, pictures, LVSIL_SMALL);
  LVCOLUMNA column{};
  ::SendMessageA(hwnd_, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
}

LRESULT ChoiceList::OnNotify(NMHDR& header) const {
  if (header.hwndFrom != hwnd_ || header.code != NM_CUSTOMDRAW) return 0;
  auto& draw = reinterpret_cast<NMLVCUSTOMDRAW&>(header);
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT) toolkit::DrawSelectionFocused(draw);
  return CDRF_DODEFAULT;
}

void ChoiceList::Add(const std::string& text, int picture) {
  LVITEMA item{};
  item.mask = LVIF_TEXT | LVIF_IMAGE;
  item.iItem = Count();
  item.pszText = const_cast<char*>(text.c_str());  // the control copies it
  item.iImage = picture;
  ::SendMessageA(hwnd_, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

void ChoiceList::Select(int index) {
  ListView_SetItemState(hwnd_, index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  ListView_EnsureVisible(hwnd_, index, FALSE);
}

std::string ChoiceList::TextAt(int index) const {
  return toolkit::ItemText([&](char* buffer, int size) {
    LVITEMA item{};
    item.pszText = buffer;
    item.cchTextMax = size;
    ::SendMessageA(hwnd_, LVM_GETITEMTEXTA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
  });
}

void ChoiceList::SetText(int index, const std::string& text) {
  LVITEMA item{};
  item.pszText = const_cast<char*>(text.c_str());
  ::SendMessageA(hwnd_, LVM_SETITEMTEXTA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
}

std::vector<std::string> ChoiceList::Texts() const {
  std::vector<std::string> texts;
  for (int i = 0; i < Count(); ++i) texts.push_back(TextAt(i));
  return texts;
}

void ChoiceList::FitColumn() { ListView_SetColumnWidth(hwnd_, 0, toolkit::ClientAreaOf(hwnd_).right); }

}  // namespace options
