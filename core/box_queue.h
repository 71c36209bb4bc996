// The queue of message boxes that packets or a failing log cause, and the truncation of texts too large for the screen.
#pragma once

#include <deque>
#include <functional>
#include <string>

#include "core/message_box.h"

namespace core {

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
