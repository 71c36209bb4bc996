// txtMsg: the display of the conversation in a rich edit control, each line a paragraph. The control is a window onto
// the conversation: it holds as much as it can lay out quickly, usually the newest lines, and loads others when the
// user scrolls to its top or end.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "ui/conversation/chat_export.h"
#include "ui/conversation/conversation.h"
#include "ui/conversation/layout_cost.h"
#include "ui/conversation/paragraphs.h"
#include "ui/conversation/rich_edit.h"
#include "ui/toolkit/units.h"

namespace conversation {

class ChatText {
 public:
  // Timers that this class sets on the parent, which passes them to OnTimer.
  static constexpr UINT_PTR kWorkTimer = 0xC1, kIndentTimer = 0xC2;

  ChatText() { ++open_; }
  ~ChatText();
  ChatText(const ChatText&) = delete;
  ChatText& operator=(const ChatText&) = delete;

  // Called when a new control has replaced the old one.
  std::function<void(HWND before, HWND now)> replaced;

  // Creates a child of the window. Throws core::Err::OutOfMemory when it cannot be created.
  void Create(HWND parent);

  HWND hwnd() const { return edit_.hwnd(); }

  void MoveTo(const toolkit::Area& area);

  // Appends a line in the sender's colour, with a hanging indent after "anna: ", and scrolls to it. `prefix` is empty
  // or ends in a blank. Text that is expensive to insert is shown later, in steps, so that the program stays
  // responsive.
  void Append(std::string_view prefix, std::string_view sender, std::string_view text, std::int32_t colour);

  void Clear();

  // Call when the user may have scrolled: when the control sends WM_COMMAND (see RichEdit).
  void OnScroll();

  // Call when the user types a line: long steps are postponed until a pause.
  void OnTyping() { typedAt_ = ::GetTickCount64(); }

  // Does one short step of the pending work.
  void OnTimer(UINT_PTR timer);

  // Loads the beginning, or the end, and goes there. False when the control has it already and can go there itself.
  bool GoToBeginning();
  bool GoToEnd();

  void ScrollPage(int command) const { ::SendMessageA(hwnd(), WM_VSCROLL, static_cast<WPARAM>(command), 0); }

  const Conversation& Said() const { return said_; }

  // Writes the whole conversation as a rich text file.
  void WriteRichText(const Sink& sink) const;

 private:
  class ViewKeeper;

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
  LONG TrimFirst(std::size_t maxCharacters);
  void TrimLast(std::size_t firstRemovable);
  ShownPart Insert(Position from, Position to, LONG at);
  void InsertByParagraphs(Position from, Position to) const;
  std::string MarkupOf(Position from, Position to) const;

  Position ShownEnd() const { return shown_.Empty() ? BeginOf(said_) : shown_.End(); }
  bool EarlierLeft() const { return !shown_.Empty() && BeginOf(said_) < shown_.First(); }
  bool LaterLeft() const { return ShownEnd() < EndOf(said_); }

  // The control shows lines that the conversation has dropped: all conversations share a memory limit.
  bool Stale() const { return !shown_.Empty() && shown_.First() < BeginOf(said_); }
  bool MustWait() const;

  // Possible although the control is full: a very long line of blanks is a single row. At top and end at once means
  // that the user has not scrolled.
  bool AllInView() const { return edit_.AtTop() && edit_.AtEnd(); }
  bool OverLimits(double tolerance, const ShownPart& without = {}) const;
  toolkit::Twips MaxIndent() const;
  LONG Characters() const { return static_cast<LONG>(shown_.Characters()); }
  bool InBurst();

  // The selection with its blanks restored; empty when the control has cut none of them.
  std::string Selected() const {
    if (shown_.Empty() || Stale()) return {};
    const CHARRANGE selection = edit_.Selection();
    const auto [from, offset] = shown_.Find(static_cast<std::size_t>(selection.cpMin));
    const LONG begin = selection.cpMin - static_cast<LONG>(offset);
    return Uncut(said_, from, edit_.TextOf({begin, selection.cpMin}), edit_.TextOf(selection));
  }

  void ScheduleWork();

  // Shared by all chat windows: their controls cost the same, and the memory limit is for all of them.
  static inline LayoutCost cost_;
  static inline std::size_t open_ = 0, weightOfAll_ = 0;
  static inline ULONGLONG typedAt_ = 0;  // as GetTickCount64 counts

  const RichEdit::Copied copied_ = [this] { return Selected(); };
  Conversation said_;
  HWND parent_ = nullptr;
  RichEdit edit_;
  toolkit::Area area_{};
  ShownParts shown_;
  ULONGLONG burstBegan_ = 0;    // as GetTickCount64 counts
  int burstLines_ = 0;          // since then
  bool following_ = true;       // the newest line is shown, or about to be
  bool workScheduled_ = false;  // kWorkTimer is set
  bool filling_ = false;        // earlier lines are being loaded until the limits are reached
  double filledFor_ = 0;        // processor time, milliseconds
};

}  // namespace conversation
