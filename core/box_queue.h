// The boxes that wait for the user, because a packet or a failing log caused them, and what of a box the screen can
// show.
#pragma once

#include <deque>
#include <functional>
#include <string>

#include "core/message_box.h"

namespace core {

class BoxQueue {
 public:
  // A box behind kMaxWaitingBoxes others is dropped.
  void Post(Box box);

  // Shows the waiting boxes in order, also those that arrive meanwhile, each when the one before it is closed. A call
  // out of `show` does nothing: a box lets events run, and those may come back here. What `show` throws ends the
  // showing; the rest waits for the next call.
  void ShowAll(const std::function<void(const Box&)>& show);

  std::size_t Waiting() const { return waiting_.size(); }

 private:
  std::deque<Box> waiting_;
  bool showing_ = false;
};

// Whether the screen can show a text of this length and shape whole.
using Fits = std::function<bool(const std::string& text)>;

// The box as it is shown, its closing sentences behind its text. A box can neither be scrolled nor moved: a text that
// would carry the button off the screen is cut at its end and marked there, a title that is too wide likewise. Nothing
// else is altered, and the closing sentences always stand.
Box CutToFit(const Box& box, const Fits& textFits, const Fits& titleFits);

}  // namespace core
