#include "ui/conversation/chat_text.h"

#include <algorithm>
#include <new>
#include <utility>

#include "core/runtime_error.h"
#include "core/system_library_win32.h"
#include "ui/toolkit/screen.h"

namespace conversation {
namespace {

using toolkit::Px;
using toolkit::Tw;
using toolkit::operator""_dp;

constexpr DWORD kStyle =
    WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL;

// What the box needs at its most wasteful, bytes, measured in a narrow window: for a paragraph, and for one of a
// length.
constexpr std::size_t kCostOfParagraph = 4000;
constexpr std::size_t CostOf(std::size_t length) { return kCostOfParagraph + 50 * length + 2 * length * length; }

// The bound of one conversation holds more than fifty thousand lines, more than anybody says in a year. This one keeps
// a hundred windows that strangers fill with lines within what a 32-bit program can hold.
constexpr std::size_t kMostOfAll = ChatText::kMostOfOne;

// Lines that cost so much are long. A flood of them must not take the place of all other talk.
constexpr std::size_t kLong = 300u << 10, kMostOfLong = 100u << 20;

// Lines that stay when the oldest go: as many as a new box takes in within a second.
constexpr std::size_t kKept = 2000;

// Beyond what those bounds let stand, so that the box never refuses a line.
constexpr LPARAM kTextLimit = 256 << 20;

// The box reads text that begins like this as markup, wherever it comes from.
constexpr char kMarkupBegin = '{';

constexpr toolkit::Twips kMargin = 4_dp;  // between text and frame

constexpr toolkit::Twips kLeastBesideHead = 40_dp;  // of a line's text

constexpr char kLineEnd[] = "\r\n";

LONG TwipsOf(int pixels) { return Tw(pixels).value; }

// Loaded with the first conversation and kept: the class lives in the library.
const char* RichEditClass() {
  static const HMODULE library = core::LoadSystemLibrary("riched20.dll");
  return library ? "RichEdit20A" : "";
}

DWORD CALLBACK TakeStream(DWORD_PTR cookie, LPBYTE bytes, LONG count, LONG* taken) {
  try {
    reinterpret_cast<std::string*>(cookie)->append(reinterpret_cast<const char*>(bytes),
                                                   static_cast<std::size_t>(count));
  } catch (const std::bad_alloc&) {
    return ERROR_NOT_ENOUGH_MEMORY;
  }
  *taken = count;
  return 0;
}

// A box of this class has no part in the desktop's theme: it would draw its edge at two sides only, unlike the boxes
// above and below it.
void DrawFrame(HWND box) {
  RECT frame{};
  ::GetWindowRect(box, &frame);
  ::OffsetRect(&frame, -frame.left, -frame.top);
  const HDC dc = ::GetWindowDC(box);
  ::FrameRect(dc, &frame, ::GetSysColorBrush(COLOR_3DSHADOW));
  ::ReleaseDC(box, dc);
}

// The class's own procedure. A subclass of the common controls' kind would look it up anew for each of the dozen
// messages that a line takes, which can take as long as everything else that they do.
WNDPROC gClassProcedure = nullptr;

LRESULT CALLBACK BoxProcedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam) {
  const LRESULT answer = ::CallWindowProcA(gClassProcedure, box, message, wParam, lParam);
  if (message == WM_NCPAINT) DrawFrame(box);
  // Coming by Tab would select the whole conversation.
  return message == WM_GETDLGCODE ? answer & ~static_cast<LRESULT>(DLGC_HASSETSEL) : answer;
}

HWND MakeBox(HWND parent) {
  const HWND box = ::CreateWindowExA(WS_EX_STATICEDGE, RichEditClass(), "", kStyle, 0, 0, 0, 0, parent, nullptr,
                                     ::GetModuleHandleA(nullptr), nullptr);
  if (!box) throw core::RuntimeError(core::Err::OutOfMemory);
  gClassProcedure =
      reinterpret_cast<WNDPROC>(::SetWindowLongPtrA(box, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&BoxProcedure)));
  ::SendMessageA(box, WM_SETFONT, reinterpret_cast<WPARAM>(toolkit::DialogFont()), FALSE);
  ::SendMessageA(box, EM_EXLIMITTEXT, 0, kTextLimit);
  ::SendMessageA(box, EM_SETUNDOLIMIT, 0, 0);
  ::SendMessageA(box, EM_AUTOURLDETECT, FALSE, 0);
  return box;
}

std::string StreamOut(HWND box, WPARAM format) {
  std::string bytes;
  EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&bytes), 0, TakeStream};
  ::SendMessageA(box, EM_STREAMOUT, format, reinterpret_cast<LPARAM>(&stream));
  if (stream.dwError != 0) throw core::RuntimeError(core::Err::OutOfMemory);
  return bytes;
}

// The box would paint itself at each step, and what a painting costs grows with the conversation. So it is painted when
// the program has nothing else to do, once for all lines that have come meanwhile.
class WithoutPainting {
 public:
  explicit WithoutPainting(HWND hwnd) : hwnd_(hwnd) { ::SendMessageA(hwnd_, WM_SETREDRAW, FALSE, 0); }
  WithoutPainting(const WithoutPainting&) = delete;
  WithoutPainting& operator=(const WithoutPainting&) = delete;
  ~WithoutPainting() {
    ::SendMessageA(hwnd_, WM_SETREDRAW, TRUE, 0);
    ::RedrawWindow(hwnd_, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME);  // the scroll bar too
  }

 private:
  HWND hwnd_;
};

}  // namespace

ChatText::~ChatText() {
  --open_;
  costOfAll_ -= cost_;
}

void ChatText::Create(HWND parent) { txtMsg = MakeBox(parent); }

void ChatText::Place(const Area& area) {
  area_ = area;
  ::SetWindowPos(txtMsg, nullptr, area.left, area.top, area.Width(), area.Height(),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
  RECT text{};
  ::GetClientRect(txtMsg, &text);
  ::InflateRect(&text, -Px(kMargin), -Px(1_dp));
  ::SendMessageA(txtMsg, EM_SETRECT, 0, reinterpret_cast<LPARAM>(&text));
}

void ChatText::Append(const ChatLine& line, COLORREF colour) {
  {
    const WithoutPainting quiet(txtMsg);
    MoveCaretToEnd();
    Write(line, colour);
    ::SendMessageA(txtMsg, WM_VSCROLL, SB_BOTTOM, 0);
  }
  Account(line, colour);
  if (TooMuch()) Shed();
}

// A second paragraph of the same text stands under the first one's text: at the left edge it could pass for a line of
// somebody else.
void ChatText::Write(const ChatLine& line, COLORREF colour) {
  const LONG indent = TwipsOf(IndentOf(line.head));
  std::string rest;
  for (std::size_t i = 1; i < line.paragraphs.size(); ++i) rest += line.paragraphs[i] + kLineEnd;
  Insert(line.paragraphs.front() + kLineEnd, colour, 0, indent);
  if (!rest.empty()) Insert(rest, colour, indent, 0);
  end_ = Selection().cpMax;
}

void ChatText::SetColour(COLORREF colour) {
  CHARFORMATA format{};
  format.cbSize = sizeof format;
  format.dwMask = CFM_COLOR;
  format.crTextColor = colour;
  ::SendMessageA(txtMsg, EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
}

// In the font of the conversation. A name as wide as the window must not push the text out of sight; one that leaves
// room for a short word is not touched, so that a time and a name fit into the narrow window of the first start.
int ChatText::IndentOf(const std::string& head) const {
  RECT client{};
  ::GetClientRect(txtMsg, &client);
  const int most = std::max(static_cast<int>(client.right) - 2 * Px(kMargin) - Px(kLeastBesideHead), Px(40_dp));
  const int width = toolkit::MeasureText(toolkit::DialogFont(), head.c_str()).cx;
  return std::min(width, most);
}

// Every new paragraph begins in the colour of the box.
void ChatText::Insert(const std::string& paragraphs, COLORREF colour, LONG start, LONG offset) {
  SetColour(colour);
  PARAFORMAT format{};
  format.cbSize = sizeof format;
  format.dwMask = PFM_STARTINDENT | PFM_OFFSET | PFM_TABSTOPS;
  format.dxStartIndent = start;
  format.dxOffset = offset;
  format.cTabCount = 1;
  format.rgxTabs[0] = start + offset;
  ::SendMessageA(txtMsg, EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&format));
  const bool couldBeMarkup = paragraphs.front() == kMarkupBegin;
  if (couldBeMarkup) InsertPlain(paragraphs.substr(0, 1));
  InsertPlain(couldBeMarkup ? paragraphs.substr(1) : paragraphs);
}

void ChatText::InsertPlain(const std::string& text) {
  ::SendMessageA(txtMsg, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
}

CHARRANGE ChatText::Selection() const {
  CHARRANGE selection{};
  ::SendMessageA(txtMsg, EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&selection));
  return selection;
}

// It mostly stands there, and looking for a place takes the box a walk through all paragraphs.
void ChatText::MoveCaretToEnd() {
  const CHARRANGE now = Selection();
  if (now.cpMin != end_ || now.cpMax != end_) MoveCaret(end_, end_);
}

void ChatText::MoveCaret(LONG from, LONG to) {
  CHARRANGE range{from, to};
  ::SendMessageA(txtMsg, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
}

void ChatText::Account(const ChatLine& line, COLORREF colour) {
  std::size_t cost = 0;
  for (const std::string& paragraph : line.paragraphs) cost += CostOf(paragraph.size());
  entries_.push_back({line, colour, cost});
  Count(entries_.back());
}

void ChatText::Count(const Entry& entry) {
  cost_ += entry.cost;
  costOfAll_ += entry.cost;
  if (entry.cost > kLong) costOfLong_ += entry.cost;
}

// Where all together are too many, those with more than their share give way.
bool ChatText::TooMuch() const {
  return cost_ > most_ || costOfLong_ > kMostOfLong || (costOfAll_ > kMostOfAll && cost_ > kMostOfAll / open_);
}

// The newest lines stay, up to half of each bound: the next line must not ask for this again.
void ChatText::Shed() {
  std::deque<Entry> kept;
  std::size_t cost = 0, costOfLong = 0;
  const std::size_t most = std::min(most_, kMostOfAll / open_) / 2;
  for (auto entry = entries_.rbegin(); entry != entries_.rend() && kept.size() < kKept; ++entry) {
    const std::size_t ifLong = entry->cost > kLong ? entry->cost : 0;
    if (ifLong && !kept.empty() && costOfLong + ifLong > kMostOfLong / 2) continue;
    if (!kept.empty() && cost + entry->cost > most) break;
    cost += entry->cost;
    costOfLong += ifLong;
    kept.push_front(*entry);
  }
  Renew(std::move(kept));
}

// A new box takes the place of the old one. To remove paragraphs from a box takes it a walk through all the others for
// each of them: minutes, where this is a second. A new box that cannot be had leaves everything as it was.
void ChatText::Renew(std::deque<Entry> kept) {
  const HWND old = txtMsg;
  const LONG oldEnd = end_;
  try {
    txtMsg = MakeBox(::GetParent(old));
    Fill(kept, old);
  } catch (...) {
    if (txtMsg != old) ::DestroyWindow(txtMsg);
    txtMsg = old;
    end_ = oldEnd;
    throw;
  }
  if (::GetFocus() == old) ::SetFocus(txtMsg);
  ::DestroyWindow(old);
  entries_ = std::move(kept);
  costOfAll_ -= cost_;
  cost_ = costOfLong_ = 0;
  for (const Entry& entry : entries_) Count(entry);
}

void ChatText::Fill(const std::deque<Entry>& lines, HWND old) {
  const WithoutPainting quiet(txtMsg);
  ::SetWindowPos(txtMsg, old, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  Place(area_);
  int numerator = 0, denominator = 0;
  ::SendMessageA(old, EM_GETZOOM, reinterpret_cast<WPARAM>(&numerator), reinterpret_cast<LPARAM>(&denominator));
  ::SendMessageA(txtMsg, EM_SETZOOM, static_cast<WPARAM>(numerator), denominator);
  end_ = 0;
  for (const Entry& entry : lines) Write(entry.line, entry.colour);
  ::SendMessageA(txtMsg, WM_VSCROLL, SB_BOTTOM, 0);
}

void ChatText::Clear() { Renew({}); }

std::string ChatText::PlainText() const { return StreamOut(txtMsg, SF_TEXT); }

std::string ChatText::RichText() const { return StreamOut(txtMsg, SF_RTF); }

}  // namespace conversation
