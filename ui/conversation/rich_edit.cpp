#include "ui/conversation/rich_edit.h"

#include <algorithm>
#include <cstring>

#include "core/runtime_error.h"
#include "core/system_library_win32.h"
#include "ui/conversation/clipboard.h"
#include "ui/toolkit/controls.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/screen.h"
#include "ui/toolkit/window.h"

namespace conversation {
namespace {

using toolkit::Px;
using toolkit::operator""_dp;

constexpr DWORD kStyle =
    WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL;

// Larger than what is ever shown, so that the control never rejects a line.
constexpr LPARAM kTextLimit = 256 << 20;

// The control interprets inserted text that begins like this as markup.
constexpr char kMarkupBegin = '{';

constexpr char kLineEnd[] = "\r\n";

constexpr toolkit::Twips kMargin = 4_dp;  // between text and frame

// The library of the window class, loaded with the first conversation and never freed.
const char* RichEditClass() {
  static const HMODULE library = core::LoadSystemLibrary("riched20.dll");
  return library ? "RichEdit20A" : "";
}

// This class does not support themes: its border would be drawn on two sides only, unlike those of the other controls.
void DrawFrame(HWND edit) {
  const toolkit::Area area = toolkit::AreaOf(edit);
  const RECT frame{0, 0, area.Width(), area.Height()};
  const HDC dc = ::GetWindowDC(edit);
  ::FrameRect(dc, &frame, ::GetSysColorBrush(COLOR_3DSHADOW));
  ::ReleaseDC(edit, dc);
}

// The class's own procedure. SetWindowSubclass would look it up for each of the dozen messages that a line takes, which
// can take as long as all their other work.
WNDPROC gClassProcedure = nullptr;

int gInside = 0;  // nesting depth of calls of it
bool gThumbDragged = false;

// The messages by which the user may scroll. Dragging a selection beyond the edge scrolls by a timer.
bool MayScroll(UINT message) {
  return message == WM_VSCROLL || message == WM_MOUSEWHEEL || message == WM_KEYDOWN || message == WM_TIMER;
}

// The control handles the keys itself, without these messages.
bool IsCopy(UINT message, WPARAM wParam) {
  if (message == WM_COPY || message == WM_CUT) return true;
  const bool key = message == WM_KEYDOWN && (wParam == 'C' || wParam == 'X' || wParam == VK_INSERT);
  return key && toolkit::KeyDown(VK_CONTROL) && !toolkit::KeyDown(VK_SHIFT);
}

// Does nothing while the clipboard is in use, like the control.
bool CopyReplacement(HWND edit) {
  const auto* const copied = reinterpret_cast<const RichEdit::Copied*>(::GetWindowLongPtrA(edit, GWLP_USERDATA));
  const std::string text = (*copied)();
  if (text.empty()) return false;
  try {
    CopyText(edit, text);
  } catch (const core::RuntimeError&) {
  }
  return true;
}

LRESULT CALLBACK EditProcedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
  if (IsCopy(message, wParam) && CopyReplacement(edit)) return 0;
  if (message == WM_VSCROLL) gThumbDragged = LOWORD(wParam) == SB_THUMBTRACK;
  ++gInside;
  const LRESULT answer = ::CallWindowProcA(gClassProcedure, edit, message, wParam, lParam);
  --gInside;
  if (message == WM_NCPAINT) DrawFrame(edit);
  if (MayScroll(message))
    ::PostMessageA(::GetParent(edit), WM_COMMAND, MAKEWPARAM(0, EN_VSCROLL), reinterpret_cast<LPARAM>(edit));
  return toolkit::WithoutSelecting(message, answer);
}

struct Stream {
  const std::string& bytes;
  std::size_t done = 0;
};

DWORD CALLBACK StreamIn(DWORD_PTR cookie, LPBYTE bytes, LONG count, LONG* given) {
  auto& stream = *reinterpret_cast<Stream*>(cookie);
  const std::size_t size = std::min(stream.bytes.size() - stream.done, static_cast<std::size_t>(count));
  std::memcpy(bytes, stream.bytes.data() + stream.done, size);
  stream.done += size;
  *given = static_cast<LONG>(size);
  return 0;
}

int FontHeight() {
  LOGFONTA font{};
  ::GetObjectA(toolkit::DialogFont(), sizeof font, &font);
  return std::abs(font.lfHeight);
}

}  // namespace

HWND RichEdit::Make(HWND parent, const Copied& copied) {
  const HWND hwnd = ::CreateWindowExA(WS_EX_STATICEDGE, RichEditClass(), "", kStyle, 0, 0, 0, 0, parent, nullptr,
                                      toolkit::Instance(), nullptr);
  if (!hwnd) return nullptr;
  gClassProcedure =
      reinterpret_cast<WNDPROC>(::SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&EditProcedure)));
  ::SetWindowLongPtrA(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&copied));
  const RichEdit edit(hwnd);
  edit.Send(WM_SETFONT, reinterpret_cast<WPARAM>(toolkit::DialogFont()));
  CHARFORMATA size{};
  size.cbSize = sizeof size;
  size.dwMask = CFM_SIZE;
  size.yHeight = FontSize() * 10;
  edit.Send(EM_SETCHARFORMAT, SCF_DEFAULT, &size);
  edit.Send(EM_EXLIMITTEXT, 0, kTextLimit);
  edit.Send(EM_SETUNDOLIMIT);
  edit.Send(EM_AUTOURLDETECT, FALSE);
  return hwnd;
}

bool RichEdit::InUse() { return gInside > 0; }

bool RichEdit::ThumbDragged() { return gThumbDragged; }

void RichEdit::MoveTo(const toolkit::Area& area) const {
  toolkit::SetArea(hwnd_, area);
  RECT text = toolkit::RectOf(toolkit::ClientAreaOf(hwnd_));
  ::InflateRect(&text, -Px(kMargin), -Px(1_dp));
  Send(EM_SETRECT, 0, &text);
}

void RichEdit::TakePlaceOf(const RichEdit& other, const toolkit::Area& area) const {
  ::SetWindowPos(hwnd_, other.hwnd_, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  MoveTo(area);
  int numerator = 0, denominator = 0;
  other.Send(EM_GETZOOM, reinterpret_cast<WPARAM>(&numerator), reinterpret_cast<LPARAM>(&denominator));
  Send(EM_SETZOOM, static_cast<WPARAM>(numerator), denominator);
}

int RichEdit::TextWidth() const { return toolkit::ClientAreaOf(hwnd_).Width() - 2 * Px(kMargin); }

// The unit of markup. Rounded up, so that the font is not smaller, whether a control rounds or truncates.
int RichEdit::FontSize() {
  const int dpi = toolkit::ScreenDpi().value;
  return (FontHeight() * 144 + dpi - 1) / dpi;
}

void RichEdit::Select(CHARRANGE range) const { Send(EM_EXSETSEL, 0, &range); }

CHARRANGE RichEdit::Selection() const {
  CHARRANGE selection{};
  Send(EM_EXGETSEL, 0, &selection);
  return selection;
}

std::string RichEdit::TextOf(CHARRANGE range) const {
  std::string text(2 * static_cast<std::size_t>(range.cpMax - range.cpMin) + 4, '\0');
  TEXTRANGEA of{range, text.data()};
  text.resize(static_cast<std::size_t>(Send(EM_GETTEXTRANGE, 0, &of)));
  return text;
}

// Every new paragraph starts with the control's default colour.
void RichEdit::InsertParagraph(const std::string& text, std::optional<COLORREF> colour, LONG start, LONG offset) const {
  CHARFORMATA format{};
  format.cbSize = sizeof format;
  format.dwMask = CFM_COLOR;
  if (colour)
    format.crTextColor = *colour;
  else
    format.dwEffects = CFE_AUTOCOLOR;
  Send(EM_SETCHARFORMAT, SCF_SELECTION, &format);
  SetIndents(start, offset);
  const std::size_t plain = text.starts_with(kMarkupBegin) ? 1 : 0;
  if (plain) InsertPlain(text.substr(0, plain));
  InsertPlain(text.substr(plain) + kLineEnd);
}

void RichEdit::SetIndents(LONG start, LONG offset) const {
  PARAFORMAT indents{};
  indents.cbSize = sizeof indents;
  indents.dwMask = PFM_STARTINDENT | PFM_OFFSET | PFM_TABSTOPS;
  indents.dxStartIndent = start;
  indents.dxOffset = offset;
  indents.cTabCount = 1;
  indents.rgxTabs[0] = start + offset;
  Send(EM_SETPARAFORMAT, 0, &indents);
}

void RichEdit::InsertPlain(const std::string& text) const { Send(EM_REPLACESEL, FALSE, text.c_str()); }

// Some controls do not count the end of the last paragraph.
void RichEdit::InsertMarkup(const std::string& markup) const {
  Stream bytes{markup};
  EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&bytes), 0, StreamIn};
  Send(EM_STREAMIN, SF_RTF | SFF_SELECTION, &stream);
  const LONG caret = Selection().cpMax;
  char last[4] = "";
  TEXTRANGEA range{{caret - 1, caret}, last};
  Send(EM_GETTEXTRANGE, 0, &range);
  if (last[0] != '\r' && last[0] != '\n') InsertPlain(kLineEnd);
}

void RichEdit::BreakAt(LONG character) const {
  Select({character, character});
  InsertPlain(kLineEnd);
}

void RichEdit::Remove(LONG from, LONG to) const {
  Select({from, to});
  InsertPlain("");
}

SCROLLINFO RichEdit::Scroll() const {
  SCROLLINFO scroll{};
  scroll.cbSize = sizeof scroll;
  scroll.fMask = SIF_POS | SIF_RANGE | SIF_PAGE;
  ::GetScrollInfo(hwnd_, SB_VERT, &scroll);
  return scroll;
}

bool RichEdit::AtTop() const {
  const SCROLLINFO scroll = Scroll();
  return scroll.nPos <= scroll.nMin;
}

bool RichEdit::AtEnd() const {
  const SCROLLINFO scroll = Scroll();
  return scroll.nPos + static_cast<int>(scroll.nPage) >= scroll.nMax;
}

// Bypasses our own procedure, since this is not the user scrolling.
void RichEdit::ScrollToEnd() const { ::CallWindowProcA(gClassProcedure, hwnd_, WM_VSCROLL, SB_BOTTOM, 0); }

LONG RichEdit::TopOf(LONG character) const {
  POINTL at{};
  ::SendMessageA(hwnd_, EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&at), character);
  return at.y;
}

RichEdit::Anchor RichEdit::TopInView() const {
  const LRESULT row = Send(EM_GETFIRSTVISIBLELINE);
  const auto character = static_cast<LONG>(Send(EM_LINEINDEX, static_cast<WPARAM>(row)));
  return {character, TopOf(character)};
}

// Scrolls by rows, then by the remaining pixels. A control may limit pixels to 65,535; when that makes it worse, by
// rows only.
void RichEdit::ScrollTo(Anchor anchor) const {
  const LRESULT row = Send(EM_EXLINEFROMCHAR, 0, anchor.character);
  const auto byRows = [&] { Send(EM_LINESCROLL, 0, row - Send(EM_GETFIRSTVISIBLELINE)); };
  const auto away = [&] { return TopOf(anchor.character) - anchor.top; };
  byRows();
  const LONG left = away();
  if (left == 0) return;
  POINT place{};
  Send(EM_GETSCROLLPOS, 0, &place);
  place.y += left;
  Send(EM_SETSCROLLPOS, 0, &place);
  if (std::abs(away()) > std::abs(left)) byRows();
}

WithoutPainting::~WithoutPainting() {
  ::SendMessageA(hwnd_, WM_SETREDRAW, TRUE, 0);
  ::RedrawWindow(hwnd_, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);  // including the scroll bar
}

}  // namespace conversation
