#include "ui/conversation/chat_text.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <string_view>

#include "core/runtime_error.h"
#include "ui/toolkit/screen.h"

namespace conversation {
namespace {

using toolkit::Px;
using toolkit::Tw;

constexpr DWORD kStyle =
    WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_TABSTOP | WS_VSCROLL | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL;

// What the box needs at its most wasteful, bytes, measured in a narrow window: for a paragraph, and for one of a
// length.
constexpr std::size_t kCostOfParagraph = 4000;
constexpr std::size_t CostOf(std::size_t length) { return kCostOfParagraph + 50 * length + 2 * length * length; }

// The bound of one conversation holds more than fifty thousand lines, more than anybody says in a year. This one keeps
// a hundred windows that strangers fill with lines within what a 32-bit program can hold.
constexpr std::size_t kMostOfAll = ChatText::kMostOfOne;

// Lines that cost so much are nobody's talk. A few of them may stand in a conversation; then the oldest of them go, and
// not the talk before them.
constexpr std::size_t kGiant = 300u << 10, kMostOfGiants = 100u << 20;

// Beyond what those bounds let stand, so that the box never refuses a line.
constexpr LPARAM kTextLimit = 256 << 20;

// The box reads text that begins like this as markup, wherever it comes from.
constexpr char kMarkupBegin = '{';

constexpr int kMargin = 4;  // between text and frame, pixels at 100 %

constexpr int kLeastBesideHead = 40;  // of a line's text, pixels at 100 %

constexpr DWORD kIndents = PFM_STARTINDENT | PFM_OFFSET | PFM_TABSTOPS;

constexpr char kLineEnd[] = "\r\n";

LONG TwipsOf(int pixels) { return Tw(pixels).value; }

// Loaded with the first conversation and kept: the class lives in the library.
const char* RichEditClass() {
  static const HMODULE library = ::LoadLibraryA("riched20.dll");
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

DWORD CALLBACK GiveStream(DWORD_PTR cookie, LPBYTE bytes, LONG room, LONG* given) {
  auto& rest = *reinterpret_cast<std::string_view*>(cookie);
  const std::size_t size = rest.copy(reinterpret_cast<char*>(bytes), static_cast<std::size_t>(room));
  rest.remove_prefix(size);
  *given = static_cast<LONG>(size);
  return 0;
}

void StreamIn(HWND box, std::string_view markup) {
  EDITSTREAM stream{reinterpret_cast<DWORD_PTR>(&markup), 0, GiveStream};
  ::SendMessageA(box, EM_STREAMIN, SF_RTF | SFF_SELECTION, reinterpret_cast<LPARAM>(&stream));
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

LRESULT CALLBACK WithWholeFrame(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
  const LRESULT answer = ::DefSubclassProc(box, message, wParam, lParam);
  if (message == WM_NCPAINT) DrawFrame(box);
  return answer;
}

HWND MakeBox(HWND parent) {
  const HWND box = ::CreateWindowExA(WS_EX_STATICEDGE, RichEditClass(), "", kStyle, 0, 0, 0, 0, parent, nullptr,
                                     ::GetModuleHandleA(nullptr), nullptr);
  if (!box) throw core::RuntimeError(core::Err::OutOfMemory);
  ::SetWindowSubclass(box, WithWholeFrame, 0, 0);
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
  ::InflateRect(&text, -Px(kMargin), -Px(1));
  ::SendMessageA(txtMsg, EM_SETRECT, 0, reinterpret_cast<LPARAM>(&text));
}

// A second paragraph of the same text stands under the first one's text: at the left edge it could pass for a line of
// somebody else.
void ChatText::Append(const ChatLine& line, COLORREF colour) {
  const LONG indent = TwipsOf(IndentOf(line.head));
  std::string rest;
  for (std::size_t i = 1; i < line.paragraphs.size(); ++i) rest += line.paragraphs[i] + kLineEnd;
  {
    const WithoutPainting quiet(txtMsg);
    MoveCaretToEnd();
    Insert(line.paragraphs.front() + kLineEnd, colour, 0, indent);
    if (!rest.empty()) Insert(rest, colour, indent, 0);
    Account(line);
    ::SendMessageA(txtMsg, WM_VSCROLL, SB_BOTTOM, 0);
  }
  if (TooMuch()) Shed();
  if (costOfGiants_ > kMostOfGiants) ShedGiants();
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
  const int most = std::max(static_cast<int>(client.right) - 2 * Px(kMargin) - Px(kLeastBesideHead), Px(40));
  const int width = toolkit::MeasureText(toolkit::DialogFont(), head.c_str()).cx;
  return std::min(width, most);
}

// Every new paragraph begins in the colour of the box.
void ChatText::Insert(const std::string& paragraphs, COLORREF colour, LONG start, LONG offset) {
  SetColour(colour);
  PARAFORMAT format{};
  format.cbSize = sizeof format;
  format.dwMask = kIndents;
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

// The caret stands behind what was inserted. In code pages of two bytes that is not as far as bytes were added.
void ChatText::Account(const ChatLine& line) {
  std::size_t cost = 0;
  for (const std::string& paragraph : line.paragraphs) cost += CostOf(paragraph.size());
  const LONG end = Selection().cpMax;
  entries_.push_back({end - end_, cost});
  end_ = end;
  cost_ += cost;
  costOfAll_ += cost;
  if (cost > kGiant) costOfGiants_ += cost;
}

void ChatText::Forget(const Entry& entry) {
  cost_ -= entry.cost;
  costOfAll_ -= entry.cost;
  if (entry.cost > kGiant) costOfGiants_ -= entry.cost;
}

// The markup of a selection may leave out how its first paragraph is indented.
ChatText::Excerpt ChatText::Take(const CHARRANGE& part) {
  Excerpt taken{};
  taken.indents.cbSize = sizeof taken.indents;
  MoveCaret(part.cpMin, part.cpMin);
  ::SendMessageA(txtMsg, EM_GETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&taken.indents));
  taken.indents.dwMask = kIndents;
  MoveCaret(part.cpMin, part.cpMax);
  taken.markup = StreamOut(txtMsg, SF_RTF | SFF_SELECTION);
  return taken;
}

// A new box takes the place of the old one. To remove paragraphs from a box takes it a walk through all the others for
// each of them: minutes, where this is a second.
void ChatText::Renew(const std::vector<CHARRANGE>& kept) {
  std::vector<Excerpt> parts;
  for (const CHARRANGE& part : kept) parts.push_back(Take(part));
  const HWND old = txtMsg;
  const bool focused = ::GetFocus() == old;
  txtMsg = MakeBox(::GetParent(old));
  {
    const WithoutPainting quiet(txtMsg);
    ::SetWindowPos(txtMsg, old, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    Place(area_);
    for (const Excerpt& part : parts) {
      ::SendMessageA(txtMsg, EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&part.indents));
      StreamIn(txtMsg, part.markup);
    }
    ::SendMessageA(txtMsg, WM_VSCROLL, SB_BOTTOM, 0);
  }
  end_ = Selection().cpMax;
  if (focused) ::SetFocus(txtMsg);
  ::DestroyWindow(old);
}

// Where all together are too many, those with more than their share give way.
bool ChatText::TooMuch() const { return cost_ > most_ || (costOfAll_ > kMostOfAll && cost_ > kMostOfAll / open_); }

// The newest quarter stays: what stays is what it takes time to move.
void ChatText::Shed() {
  const std::size_t before = cost_;
  LONG oldest = 0;
  while (cost_ > before / 4 && entries_.size() > 1) {
    oldest += entries_.front().characters;
    Forget(entries_.front());
    entries_.pop_front();
  }
  Renew({{oldest, end_}});
}

// The oldest half of them, so that the next one does not ask for this again; never the one that has just come.
void ChatText::ShedGiants() {
  std::vector<CHARRANGE> kept;
  LONG from = 0, to = 0;
  for (auto entry = entries_.begin(); entry != entries_.end();) {
    to += entry->characters;
    const bool newest = std::next(entry) == entries_.end();
    if (newest || entry->cost <= kGiant || costOfGiants_ <= kMostOfGiants / 2) {
      ++entry;
      continue;
    }
    if (const LONG end = to - entry->characters; end > from) kept.push_back({from, end});
    from = to;
    Forget(*entry);
    entry = entries_.erase(entry);
  }
  if (to > from) kept.push_back({from, to});
  Renew(kept);
}

void ChatText::Clear() {
  Renew({});
  entries_.clear();
  costOfAll_ -= cost_;
  cost_ = costOfGiants_ = 0;
}

std::string ChatText::PlainText() const { return StreamOut(txtMsg, SF_TEXT); }

std::string ChatText::RichText() const { return StreamOut(txtMsg, SF_RTF); }

}  // namespace conversation
