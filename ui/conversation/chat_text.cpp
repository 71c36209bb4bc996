#include "ui/conversation/chat_text.h"

#include <algorithm>
#include <utility>

#include "core/runtime_error.h"
#include "ui/conversation/measured.h"
#include "ui/toolkit/paint_colour.h"
#include "ui/toolkit/screen.h"

namespace conversation {
namespace {

using toolkit::Px;
using toolkit::Tw;
using toolkit::Twips;
using toolkit::operator""_dp;

// What the box takes for a part of the conversation, milliseconds. A step at a time leaves room for input; what the
// user waits for may take longer. All that it holds is laid out anew whenever its width changes.
constexpr double kAtOnce = 5, kStep = 25, kWaitedFor = 100, kLayout = 100;

// A single paragraph may take longer than a step. One that takes longer than this waits for a pause of the typing.
constexpr double kBesideTyping = 50;
constexpr ULONGLONG kPause = 400;  // milliseconds

// The newest lines are shown even if they take longer, up to a limit.
constexpr std::size_t kMinParagraphs = 2000;
constexpr double kMaxLayout = 1500;

// Of the processor, for the parts before what a new box shows.
constexpr double kMaxFilling = 5000;

// Rather than catch up with more than this, the box is filled with the newest lines.
constexpr double kBehind = 300;

// Of all boxes, bytes: a 32-bit program has room for a few times as much.
constexpr std::size_t kMaxMemory = 400u << 20;

// The weight of what is put in without asking for its cost.
constexpr std::size_t kSmall = Measured::kSmall;

// In a moment so many lines are shown as they come, the others together: one by one they take more than twice as long.
constexpr int kMaxOneByOne = 5;
constexpr ULONGLONG kMoment = 50;  // milliseconds

// By how much a box may hold too much before something is taken out of it.
constexpr double kTolerance = 1.1;

constexpr UINT kWorkTime = 10, kIndentTime = 200;  // milliseconds

constexpr Twips kMinBesideHead = 40_dp, kMinIndent = 40_dp;

constexpr Twips kMaxIndentOnPaper{2 * toolkit::kTwipsPerInch};

std::optional<COLORREF> TextColour(std::int32_t colour) {
  constexpr auto kWindowText = static_cast<std::int32_t>(0x80000000u + COLOR_WINDOWTEXT);
  if (colour == 0 || colour == kWindowText) return std::nullopt;
  return toolkit::PaintColour(colour);
}

MarkupStyle Style(Twips maxIndent, bool forBox) {
  LOGFONTA font{};
  ::GetObjectA(toolkit::DialogFont(), sizeof font, &font);
  return {.codePage = ::GetACP(),
          .font = font.lfFaceName,
          .halfPoints = RichBox::FontSize(),
          .maxIndent = maxIndent,
          .paint = TextColour,
          .forBox = forBox};
}

}  // namespace

// Keeps what is in view, and what is selected, in its place while text is put in or taken out above it.
class ChatText::View {
 public:
  explicit View(const ChatText& text)
      : box_(text.box_),
        quiet_(box_),
        atEnd_(text.following_ && box_.AtEnd()),
        selection_(box_.Selection()),
        anchor_(box_.TopInView()) {}

  void MovedBy(LONG characters) {
    for (LONG* place : {&selection_.cpMin, &selection_.cpMax, &anchor_.character})
      *place = std::max(*place + characters, 0L);
  }

  std::size_t Character() const { return static_cast<std::size_t>(anchor_.character); }

  void Restore() const {
    box_.Select(selection_);
    if (atEnd_)
      box_.ScrollToEnd();
    else
      box_.ScrollTo(anchor_);
  }

 private:
  const RichBox box_;
  const WithoutPainting quiet_;
  const bool atEnd_;
  CHARRANGE selection_;
  RichBox::Anchor anchor_;
};

ChatText::~ChatText() {
  --open_;
  weightOfAll_ -= shown_.Weight();
}

void ChatText::Create(HWND parent) {
  parent_ = parent;
  box_ = RichBox(RichBox::Make(parent, selected_));
  if (!box_.hwnd()) throw core::RuntimeError(core::Err::OutOfMemory);
}

// A name as wide as the window must not push the text out of sight; one that leaves room for a short word is not
// touched, so that a time and a name fit into the narrow window of the first start.
Twips ChatText::MaxIndent() const { return std::max(Tw(box_.TextWidth()) - kMinBesideHead, kMinIndent); }

void ChatText::MoveTo(const toolkit::Area& area) {
  area_ = area;
  const bool atEnd = box_.AtEnd();
  const Twips before = MaxIndent();
  box_.MoveTo(area);
  if (atEnd) box_.ScrollToEnd();
  const bool capped = shown_.Widest() > std::min(before, MaxIndent());
  if (capped && before != MaxIndent()) ::SetTimer(parent_, kIndentTimer, kIndentTime, nullptr);
}

void ChatText::Append(std::string_view prefix, std::string_view sender, std::string_view text, std::int32_t colour) {
  ChatLine line{.prefix = prefix, .sender = sender, .text = text, .colour = colour, .indent = {}};
  line.indent = Tw(toolkit::MeasureText(toolkit::DialogFont(), (HeadOf(line) + ' ').c_str()).cx);
  const bool behind = LaterLeft();
  said_.Add(line);
  if (!following_) return ShowEnd();
  const std::size_t most = std::max(kSmall, cost_.Portion(kAtOnce));
  const bool quick = WeightBetween(said_, {said_.End() - 1, 0}, EndOf(said_), most) <= most;
  if (InCrowd() || behind || !quick) return Wake();
  AddNew(EndOf(said_));
}

bool ChatText::InCrowd() {
  const ULONGLONG now = ::GetTickCount64();
  if (now - momentBegan_ >= kMoment) {
    momentBegan_ = now;
    inMoment_ = 0;
  }
  return ++inMoment_ > kMaxOneByOne;
}

void ChatText::Clear() {
  said_.Clear();
  following_ = true;
  Rebuild({}, {});
}

void ChatText::WriteRichText(const Sink& sink) const {
  WriteMarkup(said_, BeginOf(said_), EndOf(said_), Style(kMaxIndentOnPaper, false), sink);
}

// A timer that is set anew waits anew, and would never fire while lines come in quickly.
void ChatText::Wake() {
  if (!std::exchange(awake_, true)) ::SetTimer(parent_, kWorkTimer, kWorkTime, nullptr);
}

void ChatText::Used() {
  if (EarlierLeft() || LaterLeft()) Wake();
}

void ChatText::Work(UINT_PTR timer) {
  if (timer == kIndentTimer)
    SetIndents();
  else if (!Step() && std::exchange(awake_, false))
    ::KillTimer(parent_, kWorkTimer);
}

// False when there is nothing to do until something happens.
bool ChatText::Step() {
  if (Stale()) return ShowEnd(), true;
  if (MustWait()) return true;
  if (following_ && LaterLeft()) return CatchUp(), true;
  if (RichBox::ThumbDragged()) return false;
  filling_ = filling_ && EarlierLeft() && !TooMuch(1) && filledFor_ < kMaxFilling;
  if (filling_) return Fill(), true;
  if (following_ && AllInView()) return false;
  if (EarlierLeft() && box_.AtTop()) return ShowEarlier(kWaitedFor), true;
  if (LaterLeft() && box_.AtEnd()) return ShowLater(), true;
  return false;
}

// The paragraph that a step begins with is put in whole. To catch up it may be the newest one.
bool ChatText::MustWait() const {
  if (::GetTickCount64() - typedAt_ >= kPause) return false;
  const auto tooLong = [&](Position at) { return WeightOf(ParagraphAt(said_, at)) > cost_.Portion(kBesideTyping); };
  if (following_ && LaterLeft()) return tooLong(ShownEnd()) || tooLong(PreviousParagraph(said_, EndOf(said_)));
  return filling_ && EarlierLeft() && tooLong(PreviousParagraph(said_, shown_.First()));
}

// Some texts take many times as long as what the box was measured with, and as much memory.
void ChatText::Fill() {
  const double before = ProcessorMilliseconds();
  ShowEarlier(kStep);
  filledFor_ += ProcessorMilliseconds() - before;
}

void ChatText::CatchUp() {
  const std::size_t most = cost_.Portion(kBehind);
  if (ShownEnd() < GoBack(said_, EndOf(said_), most)) return ShowEnd();
  AddNew(GoForward(said_, ShownEnd(), cost_.Portion(kStep)));
}

void ChatText::AddNew(Position to) {
  const WithoutPainting quiet(box_);
  if (!shown_.Empty()) TrimFirst(shown_.Characters() - 1);
  if (!shown_.Empty() && TooMuch(kTolerance) && !RichBox::InUse()) return ShowEnd();
  AddLater(ShownEnd(), to);
  box_.ScrollToEnd();
}

void ChatText::ShowEarlier(double milliseconds) {
  View view(*this);
  const auto from = GoBack(said_, shown_.First(), cost_.Portion(milliseconds));
  view.MovedBy(AddEarlier(from));
  if (!filling_) TrimLast(view.Character());
  view.Restore();
}

void ChatText::ShowLater() {
  View view(*this);
  view.MovedBy(-TrimFirst(view.Character()));
  AddLater(ShownEnd(), GoForward(said_, ShownEnd(), cost_.Portion(kWaitedFor)));
  following_ = !LaterLeft();
  view.Restore();
}

void ChatText::ShowEnd() {
  following_ = true;
  const Position end = EndOf(said_);
  Rebuild(BeginOf(said_) < end ? GoBack(said_, end, cost_.Portion(kStep)) : end, end);
  box_.ScrollToEnd();
}

bool ChatText::GoToEnd() {
  if (following_) return false;
  ShowEnd();
  return true;
}

bool ChatText::GoToBeginning() {
  if (!EarlierLeft()) return false;
  following_ = false;
  Rebuild(BeginOf(said_), GoForward(said_, BeginOf(said_), cost_.Portion(kWaitedFor)));
  box_.Select({0, 0});
  return true;
}

// What the indents were set to depends on the width.
void ChatText::SetIndents() {
  if (RichBox::InUse()) return;  // until the timer comes again
  ::KillTimer(parent_, kIndentTimer);
  if (shown_.Empty()) return;
  if (Stale() || (following_ && box_.AtEnd())) return ShowEnd();
  RichBox::Anchor anchor = box_.TopInView();
  const auto [first, behind] = shown_.Find(static_cast<std::size_t>(anchor.character));
  Rebuild(first, GoForward(said_, first, cost_.Portion(kWaitedFor)));
  following_ = !LaterLeft();
  anchor.character = static_cast<LONG>(behind);
  box_.ScrollTo(anchor);
}

// In a new box, because to empty one may take as long as to fill it. In the old one if there is no other, or while it
// must stay.
void ChatText::Rebuild(Position from, Position to) {
  const RichBox old = box_;
  const HWND fresh = RichBox::InUse() ? nullptr : RichBox::Make(parent_, selected_);
  if (fresh) box_ = RichBox(fresh);
  const WithoutPainting quiet(box_);
  if (fresh)
    box_.TakePlaceOf(old, area_);
  else
    box_.Remove(0, Characters());
  weightOfAll_ -= shown_.Weight();
  shown_ = {};
  if (from < to) AddLater(from, to);
  filling_ = true;
  filledFor_ = 0;
  Wake();
  if (!fresh) return;
  if (::GetFocus() == old.hwnd()) ::SetFocus(fresh);
  ::DestroyWindow(old.hwnd());
  if (replaced) replaced(old.hwnd(), fresh);
}

void ChatText::AddLater(Position from, Position to) { shown_.AddLater(Insert(from, to, Characters())); }

// In a paragraph of its own first, or each piece would lay out the paragraph behind it anew, which takes the indents of
// the last piece.
LONG ChatText::AddEarlier(Position from) {
  const Paragraph behind = ParagraphAt(said_, shown_.First());
  box_.BreakAt(0);
  const ShownPart part = Insert(from, shown_.First(), 0);
  const auto characters = static_cast<LONG>(part.characters);
  box_.Remove(characters, characters + 1);
  box_.Select({characters, characters});
  const auto [start, offset] = IndentsOf(behind);
  box_.SetIndents(start, offset);
  shown_.AddEarlier(part);
  return characters;
}

// Where its first row begins, and how much further to the right the others do; twips.
std::pair<LONG, LONG> ChatText::IndentsOf(const Paragraph& paragraph) const {
  const LONG indent = std::min(paragraph.line.indent, MaxIndent()).value;
  return paragraph.first ? std::pair{0L, indent} : std::pair{indent, 0L};
}

ShownPart ChatText::Insert(Position from, Position to, LONG at) {
  ShownPart part{.first = from, .end = to};
  for (auto place = from; place < to;) {
    const Paragraph paragraph = ParagraphAt(said_, place);
    part.weight += WeightOf(paragraph);
    ++part.paragraphs;
    part.widest = std::max(part.widest, paragraph.line.indent);
    place = paragraph.next;
  }
  const CHARRANGE caret = box_.Selection();
  if (caret.cpMin != at || caret.cpMax != at) box_.Select({at, at});  // which takes longer
  {
    const Measured measured(cost_, part.weight);
    const bool aloneInIt = part.weight <= kSmall && (BeginOf(said_) < from || said_.First() == 0);
    if (aloneInIt)
      InsertByParagraphs(from, to);
    else
      box_.InsertMarkup(MarkupOf(from, to));
  }
  part.characters = static_cast<std::size_t>(box_.Selection().cpMax - at);
  weightOfAll_ += part.weight;
  return part;
}

// Quicker than markup for few of them.
void ChatText::InsertByParagraphs(Position from, Position to) const {
  while (from < to) {
    const Paragraph paragraph = ParagraphAt(said_, from);
    const auto [start, offset] = IndentsOf(paragraph);
    const std::string head = paragraph.first ? HeadOf(paragraph.line) + '\t' : std::string();
    box_.InsertParagraph(head + ShownInBox(paragraph.text), TextColour(paragraph.line.colour), start, offset);
    from = paragraph.next;
  }
}

std::string ChatText::MarkupOf(Position from, Position to) const {
  std::string markup;
  WriteMarkup(said_, from, to, Style(MaxIndent(), true), [&](std::string_view piece) { markup += piece; });
  return markup;
}

bool ChatText::TooMuch(double tolerance, const ShownPart& without) const {
  const auto beyond = [&](std::size_t have, std::size_t most) {
    return static_cast<double>(have) > tolerance * static_cast<double>(most);
  };
  const std::size_t weight = shown_.Weight() - without.weight;
  const std::size_t paragraphs = shown_.Paragraphs() - without.paragraphs;
  if (beyond(weight, cost_.Capacity(kLayout)) && beyond(paragraphs, kMinParagraphs)) return true;
  if (beyond(weight, cost_.Capacity(kMaxLayout))) return true;
  return beyond(cost_.MemoryOf(weightOfAll_), kMaxMemory) && weight > weightOfAll_ / open_;
}

// Only from the first `most` characters. More than is needed: the next line must not ask for it again. But no long
// paragraph, and no longer than a step: a box may need seconds to take a text out.
LONG ChatText::TrimFirst(std::size_t most) {
  std::size_t characters = 0;
  if (!TooMuch(kTolerance)) return 0;
  const Stopwatch sinceBegin;
  while (TooMuch(1, shown_.FirstPart()) && characters + shown_.FirstPart().characters <= most) {
    if (shown_.FirstPart().weight > ShownParts::kSmall || sinceBegin.Milliseconds() > kStep) break;
    weightOfAll_ -= shown_.FirstPart().weight;
    const std::size_t removed = shown_.DropFirst().characters;
    box_.Remove(0, static_cast<LONG>(removed));
    characters += removed;
  }
  return static_cast<LONG>(characters);
}

// Only behind this character, which is in view.
void ChatText::TrimLast(std::size_t character) {
  const LONG end = Characters();
  if (!TooMuch(kTolerance)) return;
  while (TooMuch(1, shown_.LastPart()) && shown_.Characters() - shown_.LastPart().characters > character) {
    weightOfAll_ -= shown_.LastPart().weight;
    shown_.DropLast();
  }
  if (Characters() < end) box_.Remove(Characters(), end);
  following_ = !LaterLeft();
}

}  // namespace conversation
