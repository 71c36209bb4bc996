#include "ui/options/page.h"

#include <algorithm>

#include "ui/toolkit/controls.h"
#include "ui/toolkit/screen.h"

namespace options {

using toolkit::AreaAt;
using toolkit::LineHeight;
using toolkit::Px;
using toolkit::SetArea;
using toolkit::operator""_dp;

void Page::Load(HWND dialog) {
  Create({.className = "picOpt", .style = WS_CHILD | WS_CLIPSIBLINGS, .exStyle = WS_EX_CONTROLPARENT}, "", {}, dialog);
  CreateControls();
}

HWND Page::AddLabel(const toolkit::Caption& text) {
  return AddControl("STATIC", text, SS_LEFTNOWORDWRAP | SS_NOPREFIX);
}

HWND Page::AddTextBox(int id) {
  const HWND edit = AddControl("EDIT", "", ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, id);
  ::SendMessageA(edit, EM_SETLIMITTEXT, 0, 0);
  return edit;
}

void Page::AddButtons(toolkit::Toolbar& toolbar, std::span<const toolkit::ToolButton> buttons) {
  AddToolbar(toolbar, buttons);
  toolbar.KeepInOneLine();
}

void Page::LayOutList(HWND label, HWND edit, toolkit::Toolbar& toolbar, HWND list) const {
  const toolkit::Area page = toolkit::ClientAreaOf(hwnd());
  const SIZE tools = toolbar.NaturalSize();
  const int margin = Px(kMargin), gap = Px(kGap), line = LineHeight(), field = FieldHeight();
  const int rowHeight = std::max(static_cast<int>(tools.cy), line + gap + field);
  const int left = page.right - margin - tools.cx, boxTop = margin + rowHeight - field;
  SetArea(label, AreaAt(margin, boxTop - gap - line, left - 2 * margin, line));
  SetArea(edit, AreaAt(margin, boxTop, left - 2 * margin, field));
  SetArea(toolbar.hwnd(), AreaAt(left, margin + rowHeight - tools.cy, tools.cx, tools.cy));
  const int listTop = margin + rowHeight + Px(8_dp);
  SetArea(list, AreaAt(margin, listTop, page.right - 2 * margin, page.bottom - 2 * margin - listTop));
}

LRESULT Page::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      if (HIWORD(wParam) == EN_SETFOCUS) ::SendMessageA(reinterpret_cast<HWND>(lParam), EM_SETSEL, 0, -1);
      break;
    case WM_NOTIFY:
      return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
    default:
      break;
  }
  return Window::Handle(message, wParam, lParam);
}

int FieldHeight() { return std::max(Px(22_dp), LineHeight() + Px(6_dp)); }

void BringToTop(HWND window) { ::SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE); }

void FocusAndSelect(HWND edit) {
  ::SetFocus(edit);
  ::SendMessageA(edit, EM_SETSEL, 0, -1);
}

Scratch::Scratch(SIZE size) : size_(size), dc_(::CreateCompatibleDC(nullptr)) {
  const toolkit::WindowDc screen(nullptr);
  bitmap_ = toolkit::Bitmap(::CreateCompatibleBitmap(screen.get(), size.cx, size.cy));
}

toolkit::ImageList Scratch::NewList(int count) const {
  return toolkit::ImageList(::ImageList_Create(size_.cx, size_.cy, ILC_COLOR24, count, 0));
}

void Scratch::Add(HIMAGELIST list, const std::function<void(HDC dc, const RECT& whole)>& draw) const {
  {
    const toolkit::ScopedSelection selected(dc_.get(), bitmap_.get());
    draw(dc_.get(), {0, 0, size_.cx, size_.cy});
  }
  ::ImageList_Add(list, bitmap_.get(), nullptr);
}

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
