#include "ui/options/page.h"

#include <algorithm>

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
  const HWND box = AddControl("EDIT", "", ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, id);
  ::SendMessageA(box, EM_SETLIMITTEXT, 0, 0);
  return box;
}

void Page::AddButtons(toolkit::Toolbar& toolbar, std::span<const toolkit::ToolButton> buttons) {
  AddToolbar(toolbar, buttons);
  toolbar.KeepInOneLine();
}

void Page::LayOutList(HWND label, HWND box, toolkit::Toolbar& toolbar, HWND list) const {
  const toolkit::Area page = toolkit::ClientAreaOf(hwnd());
  const SIZE tools = toolbar.NaturalSize();
  const int margin = Px(kMargin), gap = Px(kGap), line = LineHeight(), field = FieldHeight();
  const int rowHeight = std::max(static_cast<int>(tools.cy), line + gap + field);
  const int left = page.right - margin - tools.cx, boxTop = margin + rowHeight - field;
  SetArea(label, AreaAt(margin, boxTop - gap - line, left - 2 * margin, line));
  SetArea(box, AreaAt(margin, boxTop, left - 2 * margin, field));
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

void ReturnTo(HWND box) {
  ::SetFocus(box);
  ::SendMessageA(box, EM_SETSEL, 0, -1);
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
    const toolkit::Selected selected(dc_.get(), bitmap_.get());
    draw(dc_.get(), {0, 0, size_.cx, size_.cy});
  }
  ::ImageList_Add(list, bitmap_.get(), nullptr);
}

}  // namespace options
