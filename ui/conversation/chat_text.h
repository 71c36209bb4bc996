// txtMsg: the conversation as it is read, one paragraph a line, in a rich text box. The box is a view: it holds as much
// of the conversation as it can carry, mostly the newest lines, and is given others when the user scrolls to its edge.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "ui/conversation/box_cost.h"
#include "ui/conversation/box_text.h"
#include "ui/conversation/chat_export.h"
#include "ui/conversation/conversation.h"
#include "ui/conversation/rich_box.h"
#include "ui/conversation/shown_parts.h"
#include "ui/toolkit/area.h"

namespace conversation {

class ChatText {
 public:
  // Timers of the parent. It hands them to Work.
  static constexpr UINT_PTR kWorkTimer = 0xC1, kIndentTimer = 0xC2;

  ChatText() { ++open_; }
  ~ChatText();
  ChatText(const ChatText&) = delete;
  ChatText& operator=(const ChatText&) = delete;

  // A new box has taken the place of the one before.
  std::function<void(HWND before, HWND now)> replaced;

  // A child of the window. Throws core::Err::OutOfMemory when the system gives none.
  void Create(HWND parent);

  HWND hwnd() const { return box_.hwnd(); }

  void MoveTo(const toolkit::Area& area);

  // At the end, in the sender's colour, with the text hanging behind "anna: "; scrolls to it. `prefix` is empty or ends
  // in a blank. What takes the box long is shown a little later, in steps, so that the program never stands still.
  void Append(std::string_view prefix, std::string_view sender, std::string_view text, std::int32_t colour);

  void Clear();

  // The user may have scrolled, as the box tells the parent (RichBox).
  void Used();

  // The user types a line: what takes long gives way to it.
  void Typed() { typedAt_ = ::GetTickCount64(); }

  // One short step of what is still to be shown.
  void Work(UINT_PTR timer);

  // False when the box shows them already, so that it can go there itself.
  bool GoToBeginning();
  bool GoToEnd();

  void ScrollPage(int command) const { ::SendMessageA(hwnd(), WM_VSCROLL, static_cast<WPARAM>(command), 0); }

  const Conversation& Said() const { return said_; }

  // Of the whole conversation: the markup of a rich text file.
  void WriteRichText(const Sink& sink) const;

 private:
  class View;

  bool Step();
  void Fill();
  void CatchUp();
  void ShowEarlier(double milliseconds);
  void ShowLater();
  void ShowEnd();
  void SetIndents();

  void AddNew(Position to);
  void Rebuild(Position from, Position to);
  void AddLater(Position from, Position to);
  LONG AddEarlier(Position from);
  std::pair<LONG, LONG> IndentsOf(const Paragraph& paragraph) const;
  LONG TrimFirst(std::size_t most);
  void TrimLast(std::size_t character);
  ShownPart Insert(Position from, Position to, LONG at);
  void InsertByParagraphs(Position from, Position to) const;
  std::string MarkupOf(Position from, Position to) const;

  Position ShownEnd() const { return shown_.Empty() ? BeginOf(said_) : shown_.End(); }
  bool EarlierLeft() const { return !shown_.Empty() && BeginOf(said_) < shown_.First(); }
  bool LaterLeft() const { return ShownEnd() < EndOf(said_); }

  // Lines that the box shows are lost: another conversation has needed their room.
  bool Stale() const { return !shown_.Empty() && shown_.First() < BeginOf(said_); }
  bool MustWait() const;

  // As with very long lines of blanks, each of which is a single row. Whoever is at both edges at once has not
  // scrolled.
  bool AllInView() const { return box_.AtTop() && box_.AtEnd(); }
  bool TooMuch(double tolerance, const ShownPart& without = {}) const;
  toolkit::Twips MaxIndent() const;
  LONG Characters() const { return static_cast<LONG>(shown_.Characters()); }
  bool InCrowd();

  // The selection as it was said; empty when the box has it like that.
  std::string Selected() const {
    if (shown_.Empty() || Stale()) return {};
    const CHARRANGE selection = box_.Selection();
    const auto [from, behind] = shown_.Find(static_cast<std::size_t>(selection.cpMin));
    const LONG begin = selection.cpMin - static_cast<LONG>(behind);
    return Uncut(said_, from, box_.TextOf({begin, selection.cpMin}), box_.TextOf(selection));
  }

  void Wake();

  // All boxes are of one kind, and share the memory.
  static inline BoxCost cost_;
  static inline std::size_t open_ = 0, weightOfAll_ = 0;
  static inline ULONGLONG typedAt_ = 0;  // as GetTickCount64 counts

  const RichBox::Copied selected_ = [this] { return Selected(); };
  Conversation said_;
  HWND parent_ = nullptr;
  RichBox box_;
  toolkit::Area area_{};
  ShownParts shown_;
  ULONGLONG momentBegan_ = 0;  // as GetTickCount64 counts
  int inMoment_ = 0;           // lines
  bool following_ = true;      // the newest line is shown, or about to be
  bool awake_ = false;         // the timer of Work is set
  bool filling_ = false;       // more is put in before what is shown until the box holds what it can carry
  double filledFor_ = 0;       // milliseconds of the processor
};

}  // namespace conversation
