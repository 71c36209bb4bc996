// Message boxes, shown at once or posted to the message loop.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>

#include "core/process.h"

namespace core {

enum class BoxIcon { None, Information, Exclamation, Critical };

struct Box {
  std::string text;
  std::string closing = {};  // appended to the text, and kept when the text has to be truncated
  std::string title = kProgramName;
  BoxIcon icon = BoxIcon::None;
};

// Shows a box with an OK button and waits, for responses to the user's own action. Task-modal and topmost; messages,
// packets and timers are still handled. If no window can be created, the box is posted.
void ShowBox(const Box& box);

// Asks a Yes/No question; true for Yes, false for No or if no window can be created.
bool AskBox(const Box& box);

// Queues a box for the message loop, for everything that packets or a failing log cause. The loop shows one box at a
// time, so that a flood can neither exhaust the stack nor cover the screen; beyond kMaxWaitingBoxes they are dropped.
inline constexpr std::size_t kMaxWaitingBoxes = 100;
void PostBox(Box box);

// Shows the queued boxes. Called by the message loop; does nothing while one is open. If no window can be created, the
// box stays queued and is retried every second, because it may contain the only copy of a message.
void ShowPostedBoxes();

// The queue behind PostBox.
class BoxQueue {
 public:
  // Dropped when kMaxWaitingBoxes are queued already.
  void Post(Box box);

  // Shows the queued boxes one at a time, in order, including those posted in the meantime. A re-entrant call does
  // nothing: an open box runs events, and those may call this again. Stops and returns false when `show` returns false;
  // that box stays the first. An exception from `show` leaves the rest queued.
  bool ShowAll(const std::function<bool(const Box&)>& show);

  std::size_t Waiting() const { return waiting_.size(); }

 private:
  std::deque<Box> waiting_;
  bool showing_ = false;
};

// Whether the whole text fits on the screen.
using Fits = std::function<bool(const std::string& text)>;

// The box to show, with the closing sentences appended to the text. A message box cannot be scrolled or resized, so a
// text that would push the button off the screen is truncated and ends in "...", and so is a title that is too wide.
// The closing sentences are always kept.
Box CutToFit(const Box& box, const Fits& textFits, const Fits& titleFits);

}  // namespace core
