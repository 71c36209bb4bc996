#include "core/box_queue.h"

#include <utility>

namespace core {

void BoxQueue::Post(Box box) {
  if (waiting_.size() < kMaxWaitingBoxes) waiting_.push_back(std::move(box));
}

void BoxQueue::ShowAll(const std::function<void(const Box&)>& show) {
  if (showing_) return;
  showing_ = true;
  while (!waiting_.empty()) {
    const Box box = std::move(waiting_.front());
    waiting_.pop_front();
    show(box);
  }
  showing_ = false;
}

}  // namespace core
