#include "ui/conversation/glyph_button.h"

#include <commctrl.h>

#include <cstring>

#include "ui/toolkit/handles.h"
#include "ui/toolkit/screen.h"

namespace conversation {
namespace {

using toolkit::Px;
using toolkit::operator""_dp;

constexpr UINT_PTR kSubclass = 1;
constexpr toolkit::Twips kGlyphHeight = 13_dp;

HFONT SymbolFont() {
  static toolkit::Font font;
  if (font) return font.get();
  LOGFONTA wanted{};
  wanted.lfHeight = -Px(kGlyphHeight);
  wanted.lfCharSet = SYMBOL_CHARSET;
  std::strcpy(wanted.lfFaceName, "Marlett");
  font = toolkit::Font(::CreateFontIndirectA(&wanted));
  return font.get();
}

struct Look {
  int back, fore;  // system colours
};

constexpr Look LookOf(bool pressed, bool hot) {
  if (pressed) return {COLOR_BTNSHADOW, COLOR_BTNHIGHLIGHT};
  if (hot) return {COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT};
  return {COLOR_BTNFACE, COLOR_BTNTEXT};
}

}  // namespace

GlyphButton::~GlyphButton() {
  if (hwnd_) ::RemoveWindowSubclass(hwnd_, Procedure, kSubclass);
}

void GlyphButton::Create(HWND parent, int id, char glyph) {
  glyph_ = glyph;
  constexpr DWORD style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_OWNERDRAW;
  hwnd_ = toolkit::Created(::CreateWindowExA(0, "BUTTON", "", style, 0, 0, 0, 0, parent,
                                             reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), toolkit::Instance(),
                                             nullptr));
  ::SetWindowSubclass(hwnd_, Procedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

void GlyphButton::Draw(const DRAWITEMSTRUCT& request) const {
  const Look look = LookOf((request.itemState & ODS_SELECTED) != 0, hot_);
  RECT box = request.rcItem;
  ::FillRect(request.hDC, &box, ::GetSysColorBrush(look.back));
  ::SetBkMode(request.hDC, TRANSPARENT);
  ::SetTextColor(request.hDC, ::GetSysColor(look.fore));
  const toolkit::Selected font(request.hDC, SymbolFont());
  ::DrawTextA(request.hDC, &glyph_, 1, &box, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
  if ((request.itemState & ODS_FOCUS) == 0 || (request.itemState & ODS_NOFOCUSRECT) != 0) return;
  ::InflateRect(&box, -1, -1);
  ::DrawFocusRect(request.hDC, &box);
}

LRESULT CALLBACK GlyphButton::Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                        DWORD_PTR button) {
  GlyphButton& self = *reinterpret_cast<GlyphButton*>(button);
  switch (message) {
    case WM_MOUSEMOVE:
      self.SetHot(true);
      break;
    case WM_MOUSELEAVE:
      self.SetHot(false);
      break;
    case WM_NCDESTROY:
      ::RemoveWindowSubclass(hwnd, Procedure, kSubclass);
      self.hwnd_ = nullptr;
      break;
    default:
      break;
  }
  return ::DefSubclassProc(hwnd, message, wParam, lParam);
}

void GlyphButton::SetHot(bool hot) {
  if (hot == hot_) return;
  hot_ = hot;
  ::InvalidateRect(hwnd_, nullptr, FALSE);
  TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, hwnd_, 0};
  if (hot) ::TrackMouseEvent(&track);
}

}  // namespace conversation
