#include "ui/conversation/popup_controls.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <unordered_map>

#include "core/callback_guard.h"
#include "core/code_page.h"
#include "core/text.h"
#include "ui/conversation/popup_layout.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/screen.h"

namespace conversation {
namespace {

using toolkit::Px;
using toolkit::operator""_dp;

constexpr UINT_PTR kSubclass = 1;
constexpr toolkit::Twips kMargin = 7_dp;  // around the text of a label
constexpr int kWheelLines = 3;

// A static control draws tabs as boxes.
std::string WithoutTabs(const std::string& text) {
  std::string plain;
  plain.reserve(text.size());
  for (const char c : text) c == '\t' ? plain.append("    ") : plain.append(1, c);
  return plain;
}

// Widths of characters in the font of a device context, cached per text: thousands of short lines would cost thousands
// of calls.
class CharacterWidths {
 public:
  explicit CharacterWidths(HDC dc) : dc_(dc) { ofBytes_.fill(kUnknown); }

  int Of(std::string_view text) {
    int width = 0;
    while (!text.empty()) width += Take(text);
    return width;
  }

  // The size in bytes of the first characters that fit into the width.
  std::size_t FitInto(std::string_view text, int width) {
    std::string_view rest = text;
    while (!rest.empty()) {
      const std::size_t left = rest.size();
      if ((width -= Take(rest)) < 0) return text.size() - left;
    }
    return text.size();
  }

 private:
  // Removes the first character of a text; returns its width.
  int Take(std::string_view& text) {
    const std::string_view character = core::FirstCharacter(text);
    text.remove_prefix(character.size());
    int& width = character.size() == 1 ? ofBytes_[core::ByteOf(character[0])]
                                       : ofDoubleByte_.try_emplace(std::string(character), kUnknown).first->second;
    if (width == kUnknown) width = static_cast<int>(toolkit::MeasureText(dc_, character).cx);
    return width;
  }

  static constexpr int kUnknown = -1;

  HDC dc_;
  std::array<int, 256> ofBytes_;
  std::unordered_map<std::string, int> ofDoubleByte_;
};

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

MessageLabel::~MessageLabel() {
  if (hwnd_) ::RemoveWindowSubclass(hwnd_, Procedure, kSubclass);
}

void MessageLabel::Create(HWND parent, const std::string& text) {
  shown_ = WithoutTabs(text.c_str());  // like a text box, ends at a NUL
  hwnd_ = toolkit::Created(::CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_VISIBLE | SS_LEFT | SS_NOPREFIX, 0, 0, 0, 0,
                                             parent, nullptr, toolkit::Instance(), nullptr));
  ::SetWindowTextA(hwnd_, text.c_str());  // the text passed to CreateWindow is limited to 32 K characters
  ::SendMessageA(hwnd_, WM_SETFONT, reinterpret_cast<WPARAM>(toolkit::DialogFont()), FALSE);
  ::SetWindowSubclass(hwnd_, Procedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

SIZE MessageLabel::Fit(SIZE largest) {
  const toolkit::WindowDc dc(hwnd_);
  const toolkit::ScopedSelection font(dc.get(), toolkit::DialogFont());
  TEXTMETRICA metrics{};
  ::GetTextMetricsA(dc.get(), &metrics);
  lineHeight_ = static_cast<int>(metrics.tmHeight);
  const int margins = 2 * Px(kMargin), bar = ::GetSystemMetrics(SM_CXVSCROLL);
  const auto height = [&] { return static_cast<int>(lines_.size()) * lineHeight_ + margins; };
  CharacterWidths widths(dc.get());
  const auto breakToFit = [&](int width) {
    lines_ = BreakLines(shown_, [&](std::string_view line) { return widths.FitInto(line, width); });
  };
  breakToFit(static_cast<int>(largest.cx) - margins);
  scrolls_ = height() > largest.cy;
  if (scrolls_) {
    MakeScrollable();
    breakToFit(static_cast<int>(largest.cx) - margins - bar);
  }
  int width = 0;
  for (const std::string_view line : lines_) width = std::max(width, widths.Of(line));
  return {width + margins + (scrolls_ ? bar : 0), std::min(height(), static_cast<int>(largest.cy))};
}

// With a scroll bar it is in the Tab order, so that it can be scrolled by keyboard.
void MessageLabel::MakeScrollable() {
  ::SetWindowLongPtrA(hwnd_, GWL_STYLE, ::GetWindowLongPtrA(hwnd_, GWL_STYLE) | WS_TABSTOP);
  ::ShowScrollBar(hwnd_, SB_VERT, TRUE);
}

void MessageLabel::SetForeColour(std::int32_t colour) {
  foreColour_ = colour;
  ::InvalidateRect(hwnd_, nullptr, FALSE);
}

void MessageLabel::SetBackColour(int systemColour) {
  backColour_ = systemColour;
  ::InvalidateRect(hwnd_, nullptr, FALSE);
}

LRESULT CALLBACK MessageLabel::Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                         DWORD_PTR label) {
  MessageLabel& self = *reinterpret_cast<MessageLabel*>(label);
  if (message == WM_NCDESTROY) {
    ::RemoveWindowSubclass(hwnd, Procedure, kSubclass);
    self.hwnd_ = nullptr;
    return ::DefSubclassProc(hwnd, message, wParam, lParam);
  }
  return core::Guarded([&] { return self.Answer(message, wParam, lParam); });
}

LRESULT MessageLabel::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_PAINT:
      Paint();
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SIZE:
      ScrollTo(top_);
      return 0;
    case WM_NCHITTEST:  // static controls are transparent to the mouse, even their scroll bars
      return ::DefWindowProcA(hwnd_, message, wParam, lParam);
    case WM_LBUTTONDOWN:
      if (scrolls_) ::SetFocus(hwnd_);
      return 0;
    case WM_GETDLGCODE:
      return scrolls_ ? DLGC_WANTARROWS : DLGC_STATIC;
    case WM_KEYDOWN:
      if (ScrollByKey(wParam)) return 0;
      break;
    case WM_VSCROLL:
      Scroll(LOWORD(wParam));
      return 0;
    case WM_MOUSEWHEEL: {
      wheel_ += GET_WHEEL_DELTA_WPARAM(wParam) * kWheelLines;
      const int lines = wheel_ / WHEEL_DELTA;
      wheel_ -= lines * WHEEL_DELTA;
      ScrollTo(top_ - lines);
      return 0;
    }
    default:
      break;
  }
  return ::DefSubclassProc(hwnd_, message, wParam, lParam);
}

void MessageLabel::Paint() {
  PAINTSTRUCT paint{};
  const HDC dc = ::BeginPaint(hwnd_, &paint);
  const RECT client = toolkit::RectOf(toolkit::ClientAreaOf(hwnd_));
  ::FillRect(dc, &client, ::GetSysColorBrush(backColour_));
  PaintLines(dc);
  ::EndPaint(hwnd_, &paint);
}

void MessageLabel::PaintLines(HDC dc) const {
  const toolkit::ScopedSelection font(dc, toolkit::DialogFont());
  ::SetTextColor(dc, toolkit::TextColour(foreColour_));
  ::SetBkMode(dc, TRANSPARENT);
  const std::size_t first = static_cast<std::size_t>(top_);
  const std::size_t end = std::min(lines_.size(), first + static_cast<std::size_t>(PageLines()));
  for (std::size_t i = first; i < end; ++i) {
    const int y = Px(kMargin) + static_cast<int>(i - first) * lineHeight_;
    const std::wstring line = core::Wide(lines_[i]);
    ::TextOutW(dc, Px(kMargin), y, line.data(), static_cast<int>(line.size()));
  }
}

int MessageLabel::PageLines() const {
  return std::max((toolkit::ClientAreaOf(hwnd_).bottom - 2 * Px(kMargin)) / lineHeight_, 1);
}

void MessageLabel::Scroll(int command) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_TRACKPOS;
  ::GetScrollInfo(hwnd_, SB_VERT, &info);
  const int last = static_cast<int>(lines_.size());
  switch (command) {
    case SB_LINEUP:
      return ScrollTo(top_ - 1);
    case SB_LINEDOWN:
      return ScrollTo(top_ + 1);
    case SB_PAGEUP:
      return ScrollTo(top_ - PageLines());
    case SB_PAGEDOWN:
      return ScrollTo(top_ + PageLines());
    case SB_TOP:
      return ScrollTo(0);
    case SB_BOTTOM:
      return ScrollTo(last);
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
      return ScrollTo(info.nTrackPos);
    default:
      return;
  }
}

bool MessageLabel::ScrollByKey(WPARAM key) {
  constexpr struct {
    WPARAM key;
    int command;
  } keys[] = {{VK_UP, SB_LINEUP},     {VK_DOWN, SB_LINEDOWN}, {VK_PRIOR, SB_PAGEUP},
              {VK_NEXT, SB_PAGEDOWN}, {VK_HOME, SB_TOP},      {VK_END, SB_BOTTOM}};
  const auto found = std::ranges::find_if(keys, [&](const auto& entry) { return entry.key == key; });
  if (found == std::end(keys)) return false;
  Scroll(found->command);
  return true;
}

// Updates the scroll bar too.
void MessageLabel::ScrollTo(int line) {
  if (!scrolls_) return;
  const int page = PageLines(), count = static_cast<int>(lines_.size());
  top_ = std::clamp(line, 0, std::max(count - page, 0));
  const SCROLLINFO info{sizeof info, SIF_ALL | SIF_DISABLENOSCROLL, 0, count - 1, static_cast<UINT>(page), top_, 0};
  ::SetScrollInfo(hwnd_, SB_VERT, &info, TRUE);
  ::InvalidateRect(hwnd_, nullptr, FALSE);
}

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
  RECT rect = request.rcItem;
  ::FillRect(request.hDC, &rect, ::GetSysColorBrush(look.back));
  ::SetBkMode(request.hDC, TRANSPARENT);
  ::SetTextColor(request.hDC, ::GetSysColor(look.fore));
  const toolkit::ScopedSelection font(request.hDC, SymbolFont());
  ::DrawTextA(request.hDC, &glyph_, 1, &rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
  if ((request.itemState & ODS_FOCUS) == 0 || (request.itemState & ODS_NOFOCUSRECT) != 0) return;
  ::InflateRect(&rect, -1, -1);
  ::DrawFocusRect(request.hDC, &rect);
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
