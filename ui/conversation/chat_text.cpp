#include "ui/conversation/chat_text.h"

#include <algorithm>
#include <utility>

#include "core/runtime_error.h"
#include "ui/toolkit/screen.h"

namespace conversation {
namespace {

using toolkit::Px;
using toolkit::Tw;
using toolkit::Twips;
using toolkit::operator""_dp;

// Time budgets, milliseconds: a line inserted at once when it arrives, a background step (short, so that input is
// handled in between), a step that the user waits for, and the layout of everything in the control, which is repeated
// whenever its width changes.
constexpr double kMaxImmediate = 5, kMaxStep = 25, kMaxAwaitedStep = 100, kMaxLayout = 100;

// A single paragraph may exceed a step. If it takes longer than this, it waits for a pause in typing.
constexpr double kMaxStepWhileTyping = 50;
constexpr ULONGLONG kTypingPause = 400;  // milliseconds

// This many of the newest paragraphs are shown even if their layout exceeds kMaxLayout, up to a second limit.
constexpr std::size_t kMinParagraphs = 2000;
constexpr double kMaxLayoutOfNewest = 1500;

// Processor time for loading earlier lines into a new control, milliseconds.
constexpr double kMaxFilling = 5000;

// If catching up would take longer than this, the control is rebuilt with the newest lines.
constexpr double kMaxCatchUp = 300;

// Memory of all controls, bytes: a fraction of what a 32-bit process can allocate.
constexpr std::size_t kMaxMemory = 400u << 20;

// The weight that is inserted without asking for its cost.
constexpr std::size_t kSmall = InsertionMeter::kSmall;

// Limit on lines inserted one by one during a burst; the others are inserted together, in less than half the time.
constexpr int kMaxOneByOne = 5;
constexpr ULONGLONG kBurstTime = 50;  // milliseconds

// By how much a control may exceed its limits before it is trimmed.
constexpr double kTolerance = 1.1;

constexpr UINT kWorkInterval = 10, kIndentDelay = 200;  // milliseconds
constexpr Twips kMinTextWidth = 40_dp, kMinIndent = 40_dp, kMaxIndentOnPaper{2 * toolkit::kTwipsPerInch};

std::optional<COLORREF> TextColour(std::int32_t colour) {
  constexpr auto kWindowText = static_cast<std::int32_t>(0x80000000u + COLOR_WINDOWTEXT);
  return colour == 0 || colour == kWindowText ? std::nullopt : std::optional(toolkit::PaintColour(colour));
}

MarkupStyle Style(Twips maxIndent, bool forEdit) {
  LOGFONTA font{};
  ::GetObjectA(toolkit::DialogFont(), sizeof font, &font);
  return {.codePage = ::GetACP(),
          .charset = toolkit::SystemCharset(),
          .font = font.lfFaceName,
          .halfPoints = RichEdit::FontSize(),
          .maxIndent = maxIndent,
          .paint = TextColour,
          .forEdit = forEdit};
}

}  // namespace

// Preserves the scroll position and the selection while text is inserted or removed above the view.
class ChatText::ViewKeeper {
 public:
  explicit ViewKeeper(const ChatText& text)
      : edit_(text.edit_),
        quiet_(edit_),
        atEnd_(text.following_ && edit_.AtEnd()),
        selection_(edit_.Selection()),
        anchor_(edit_.TopInView()) {}

  void MovedBy(LONG characters) {
    for (LONG* position : {&selection_.cpMin, &selection_.cpMax, &anchor_.character})
      *position = std::max(*position + characters, 0L);
  }

  std::size_t Character() const { return static_cast<std::size_t>(anchor_.character); }

  void Restore() const {
    edit_.Select(selection_);
    if (atEnd_)
      edit_.ScrollToEnd();
    else
      edit_.ScrollTo(anchor_);
  }

 private:
  const RichEdit edit_;
  const WithoutPainting quiet_;
  const bool atEnd_;
  CHARRANGE selection_;
  RichEdit::Anchor anchor_;
};

ChatText::~ChatText() {
  --open_;
  weightOfAll_ -= shown_.Weight();
}

void ChatText::Create(HWND parent) {
  parent_ = parent;
  edit_ = RichEdit(RichEdit::Make(parent, copied_));
  if (!edit_.hwnd()) throw core::RuntimeError(core::Err::OutOfMemory);
}

// A name as wide as the window must not push the text out of view. A name that leaves room for a short word is not
// limited, so that a time and a name fit into the narrow window of the first start.
Twips ChatText::MaxIndent() const { return std::max(Tw(edit_.TextWidth()) - kMinTextWidth, kMinIndent); }

void ChatText::MoveTo(const toolkit::Area& area) {
  area_ = area;
  const bool atEnd = edit_.AtEnd();
  const Twips before = MaxIndent();
  edit_.MoveTo(area);
  if (atEnd) edit_.ScrollToEnd();
  const bool capped = shown_.Widest() > std::min(before, MaxIndent());
  if (capped && before != MaxIndent()) ::SetTimer(parent_, kIndentTimer, kIndentDelay, nullptr);
}

void ChatText::Append(std::string_view prefix, std::string_view sender, std::string_view text, std::int32_t colour) {
  ChatLine line{.prefix = prefix, .sender = sender, .text = text, .colour = colour, .indent = {}};
  line.indent = Tw(toolkit::MeasureText(toolkit::DialogFont(), (HeadOf(line) + ' ').c_str()).cx);
  const bool catchingUp = LaterLeft();
  said_.Add(line);
  if (!following_) return ShowEnd();
  const std::size_t limit = std::max(kSmall, cost_.Portion(kMaxImmediate));
  const bool quick = WeightBetween(said_, {said_.End() - 1, 0}, EndOf(said_), limit) <= limit;
  if (InBurst() || catchingUp || !quick) return ScheduleWork();
  AddNew(EndOf(said_));
}

bool ChatText::InBurst() {
  const ULONGLONG now = ::GetTickCount64();
  if (now - burstBegan_ >= kBurstTime) {
    burstBegan_ = now;
    burstLines_ = 0;
  }
  return ++burstLines_ > kMaxOneByOne;
}

void ChatText::Clear() {
  said_.Clear();
  following_ = true;
  Rebuild({}, {});
}

void ChatText::WriteRichText(const Sink& sink) const {
  WriteMarkup(said_, BeginOf(said_), EndOf(said_), Style(kMaxIndentOnPaper, false), sink);
}

// Setting a running timer restarts it, so during a burst of lines it would never fire.
void ChatText::ScheduleWork() {
  if (!std::exchange(workScheduled_, true)) ::SetTimer(parent_, kWorkTimer, kWorkInterval, nullptr);
}

void ChatText::OnScroll() {
  if (EarlierLeft() || LaterLeft()) ScheduleWork();
}

void ChatText::OnTimer(UINT_PTR timer) {
  if (timer == kIndentTimer)
    SetIndents();
  else if (!Step() && std::exchange(workScheduled_, false))
    ::KillTimer(parent_, kWorkTimer);
}

// False when there is no work left until the next line or scrolling.
bool ChatText::Step() {
  if (Stale()) return ShowEnd(), true;
  if (MustWait()) return true;
  if (following_ && LaterLeft()) return CatchUp(), true;
  if (RichEdit::ThumbDragged()) return false;
  filling_ = filling_ && EarlierLeft() && !OverLimits(1) && filledFor_ < kMaxFilling;
  if (filling_) return Fill(), true;
  if (following_ && AllInView()) return false;
  if (EarlierLeft() && edit_.AtTop()) return ShowEarlier(kMaxAwaitedStep), true;
  if (LaterLeft() && edit_.AtEnd()) return ShowLater(), true;
  return false;
}

// A step inserts at least one whole paragraph, so a long one may block typing. Catching up may insert the oldest
// pending paragraph or, after a rebuild, the newest.
bool ChatText::MustWait() const {
  if (::GetTickCount64() - typedAt_ >= kTypingPause) return false;
  const auto tooLong = [&](Position at) {
    return WeightOf(ParagraphAt(said_, at)) > cost_.Portion(kMaxStepWhileTyping);
  };
  if (following_ && LaterLeft()) return tooLong(ShownEnd()) || tooLong(PreviousParagraph(said_, EndOf(said_)));
  return filling_ && EarlierLeft() && tooLong(PreviousParagraph(said_, shown_.First()));
}

// Limited by processor time too: some texts cost many times as much as those that were measured.
void ChatText::Fill() {
  const double before = ProcessorMilliseconds();
  ShowEarlier(kMaxStep);
  filledFor_ += ProcessorMilliseconds() - before;
}

void ChatText::CatchUp() {
  if (ShownEnd() < GoBack(said_, EndOf(said_), cost_.Portion(kMaxCatchUp))) return ShowEnd();
  AddNew(GoForward(said_, ShownEnd(), cost_.Portion(kMaxStep)));
}

void ChatText::AddNew(Position to) {
  const WithoutPainting quiet(edit_);
  if (!shown_.Empty()) TrimFirst(shown_.Characters() - 1);
  if (!shown_.Empty() && OverLimits(kTolerance) && !RichEdit::InUse()) return ShowEnd();
  AddLater(ShownEnd(), to);
  edit_.ScrollToEnd();
}

void ChatText::ShowEarlier(double milliseconds) {
  ViewKeeper view(*this);
  const auto from = GoBack(said_, shown_.First(), cost_.Portion(milliseconds));
  view.MovedBy(AddEarlier(from));
  if (!filling_) TrimLast(view.Character());
  view.Restore();
}

void ChatText::ShowLater() {
  ViewKeeper view(*this);
  view.MovedBy(-TrimFirst(view.Character()));
  AddLater(ShownEnd(), GoForward(said_, ShownEnd(), cost_.Portion(kMaxAwaitedStep)));
  following_ = !LaterLeft();
  view.Restore();
}

void ChatText::ShowEnd() {
  following_ = true;
  const Position end = EndOf(said_);
  Rebuild(BeginOf(said_) < end ? GoBack(said_, end, cost_.Portion(kMaxStep)) : end, end);
  edit_.ScrollToEnd();
}

bool ChatText::GoToEnd() {
  if (following_) return false;
  ShowEnd();
  return true;
}

bool ChatText::GoToBeginning() {
  if (!EarlierLeft()) return false;
  following_ = false;
  Rebuild(BeginOf(said_), GoForward(said_, BeginOf(said_), cost_.Portion(kMaxAwaitedStep)));
  edit_.Select({0, 0});
  return true;
}

// Indents are limited by the width (MaxIndent).
void ChatText::SetIndents() {
  if (RichEdit::InUse()) return;  // the timer repeats
  ::KillTimer(parent_, kIndentTimer);
  if (shown_.Empty()) return;
  if (Stale() || (following_ && edit_.AtEnd())) return ShowEnd();
  RichEdit::Anchor anchor = edit_.TopInView();
  const auto [first, offset] = shown_.Find(static_cast<std::size_t>(anchor.character));
  Rebuild(first, GoForward(said_, first, cost_.Portion(kMaxAwaitedStep)));
  following_ = !LaterLeft();
  anchor.character = static_cast<LONG>(offset);
  edit_.ScrollTo(anchor);
}

// Uses a new control, because emptying one may take as long as filling it. Uses the old one if none can be created, or
// while it must not be destroyed.
void ChatText::Rebuild(Position from, Position to) {
  const RichEdit old = edit_;
  const HWND fresh = RichEdit::InUse() ? nullptr : RichEdit::Make(parent_, copied_);
  if (fresh) edit_ = RichEdit(fresh);
  const WithoutPainting quiet(edit_);
  if (fresh)
    edit_.TakePlaceOf(old, area_);
  else
    edit_.Remove(0, Characters());
  weightOfAll_ -= shown_.Weight();
  shown_ = {};
  if (from < to) AddLater(from, to);
  filling_ = true;
  filledFor_ = 0;
  ScheduleWork();
  if (!fresh) return;
  if (::GetFocus() == old.hwnd()) ::SetFocus(fresh);
  ::DestroyWindow(old.hwnd());
  if (replaced) replaced(old.hwnd(), fresh);
}

void ChatText::AddLater(Position from, Position to) { shown_.AddLater(Insert(from, to, Characters())); }

// Inserts into a paragraph of its own: otherwise the control lays out the following paragraph again for each piece.
// Removing that paragraph's end gives the following paragraph the indents of the last piece, so they are set again.
LONG ChatText::AddEarlier(Position from) {
  const Paragraph following = ParagraphAt(said_, shown_.First());
  edit_.BreakAt(0);
  const ShownPart part = Insert(from, shown_.First(), 0);
  const auto characters = static_cast<LONG>(part.characters);
  edit_.Remove(characters, characters + 1);
  edit_.Select({characters, characters});
  const auto [start, offset] = IndentsOf(following);
  edit_.SetIndents(start, offset);
  shown_.AddEarlier(part);
  return characters;
}

// The indent of the first row, and of the other rows relative to it; twips.
std::pair<LONG, LONG> ChatText::IndentsOf(const Paragraph& paragraph) const {
  const LONG indent = std::min(paragraph.line.indent, MaxIndent()).value;
  return paragraph.first ? std::pair{0L, indent} : std::pair{indent, 0L};
}

ShownPart ChatText::Insert(Position from, Position to, LONG at) {
  ShownPart part{.first = from, .end = to};
  for (auto position = from; position < to;) {
    const Paragraph paragraph = ParagraphAt(said_, position);
    part.weight += WeightOf(paragraph);
    ++part.paragraphs;
    part.widest = std::max(part.widest, paragraph.line.indent);
    position = paragraph.next;
  }
  const CHARRANGE caret = edit_.Selection();
  if (caret.cpMin != at || caret.cpMax != at) edit_.Select({at, at});  // linear in the number of paragraphs
  {
    const InsertionMeter meter(cost_, part.weight);
    // Only the markup has the paragraph that counts the dropped lines.
    const bool countsDroppedLines = !(BeginOf(said_) < from) && said_.First() > 0;
    if (part.weight <= kSmall && !countsDroppedLines)
      InsertByParagraphs(from, to);
    else
      edit_.InsertMarkup(MarkupOf(from, to));
  }
  part.characters = static_cast<std::size_t>(edit_.Selection().cpMax - at);
  weightOfAll_ += part.weight;
  return part;
}

// Faster than markup for a few paragraphs.
void ChatText::InsertByParagraphs(Position from, Position to) const {
  while (from < to) {
    const Paragraph paragraph = ParagraphAt(said_, from);
    const auto [start, offset] = IndentsOf(paragraph);
    const std::string head = paragraph.first ? HeadOf(paragraph.line) + '\t' : std::string();
    edit_.InsertParagraph(head + ShownInEdit(paragraph.text), TextColour(paragraph.line.colour), start, offset);
    from = paragraph.next;
  }
}

std::string ChatText::MarkupOf(Position from, Position to) const {
  std::string markup;
  WriteMarkup(said_, from, to, Style(MaxIndent(), true), [&](std::string_view piece) { markup += piece; });
  return markup;
}

bool ChatText::OverLimits(double tolerance, const ShownPart& without) const {
  const auto beyond = [&](std::size_t have, std::size_t limit) {
    return static_cast<double>(have) > tolerance * static_cast<double>(limit);
  };
  const std::size_t weight = shown_.Weight() - without.weight;
  const std::size_t paragraphs = shown_.Paragraphs() - without.paragraphs;
  if (beyond(weight, cost_.Capacity(kMaxLayout)) && beyond(paragraphs, kMinParagraphs)) return true;
  if (beyond(weight, cost_.Capacity(kMaxLayoutOfNewest))) return true;
  return beyond(cost_.MemoryOf(weightOfAll_), kMaxMemory) && weight > weightOfAll_ / open_;
}

// Trims only within the first `maxCharacters`. Removes the tolerance too, so that not every line trims. Stops at a long
// paragraph or after a step: a control may need seconds to remove text.
LONG ChatText::TrimFirst(std::size_t maxCharacters) {
  std::size_t characters = 0;
  if (!OverLimits(kTolerance)) return 0;
  const Stopwatch sinceBegin;
  while (OverLimits(1, shown_.FirstPart()) && characters + shown_.FirstPart().characters <= maxCharacters) {
    if (shown_.FirstPart().weight > ShownParts::kSmall || sinceBegin.Milliseconds() > kMaxStep) break;
    weightOfAll_ -= shown_.FirstPart().weight;
    const std::size_t removed = shown_.DropFirst().characters;
    edit_.Remove(0, static_cast<LONG>(removed));
    characters += removed;
  }
  return static_cast<LONG>(characters);
}

// Trims only from this character on; it is in view.
void ChatText::TrimLast(std::size_t firstRemovable) {
  const LONG end = Characters();
  if (!OverLimits(kTolerance)) return;
  while (OverLimits(1, shown_.LastPart()) && shown_.Characters() - shown_.LastPart().characters > firstRemovable) {
    weightOfAll_ -= shown_.LastPart().weight;
    shown_.DropLast();
  }
  if (Characters() < end) edit_.Remove(Characters(), end);
  following_ = !LaterLeft();
}

}  // namespace conversation
