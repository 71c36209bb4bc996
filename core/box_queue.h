// The boxes that wait for the user, because a packet or a failing log caused them.
#pragma once

#include <deque>
#include <functional>

#include "core/message_box.h"

namespace core {

class BoxQueue {
 public:
  // A box behind kMaxWaitingBoxes others is dropped. Of an enormous one the beginning is kept: a box can neither be
  // scrolled nor moved, and its button must stay on the screen.
  void Post(Box box);

  // Shows the waiting boxes in order, also those that arrive meanwhile, each when the one before it is closed. A call
  // out of `show` does nothing: a box lets events run, and those may come back here.
  void ShowAll(const std::function<void(const Box&)>& show);

  std::size_t Waiting() const { return waiting_.size(); }

 private:
  std::deque<Box> waiting_;
  bool showing_ = false;
};

}  // namespace core
