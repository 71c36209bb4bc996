// The queue of alerts. Many senders may send alerts at once: nobody reads more than a few dozen popups, and each one
// uses windows of the desktop, so further alerts are queued.
#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "core/text.h"

namespace conversation {

struct Alert {
  std::string text, sender;
  int iconKind = 0;
};

inline constexpr std::size_t kMaxOpenPopups = 31, kMaxWaitingAlerts = 1000;

class AlertQueue {
 public:
  // Appends an alert; drops it when the queue is full.
  void Add(Alert alert);

  // The next alert to show while `open` popups are open; nothing when there are too many, or the queue is empty.
  std::optional<Alert> Next(std::size_t open);

  // Drops the queued alerts of a sender, ignoring case.
  void Forget(std::string_view sender);

  std::size_t Waiting() const { return waiting_.size(); }

 private:
  std::deque<Alert> waiting_;
};

inline void AlertQueue::Add(Alert alert) {
  if (waiting_.size() < kMaxWaitingAlerts) waiting_.push_back(std::move(alert));
}

inline void AlertQueue::Forget(std::string_view sender) {
  std::erase_if(waiting_, [&](const Alert& alert) { return core::EqualIgnoringCase(alert.sender, sender); });
}

inline std::optional<Alert> AlertQueue::Next(std::size_t open) {
  if (open >= kMaxOpenPopups || waiting_.empty()) return std::nullopt;
  std::optional<Alert> next = std::move(waiting_.front());
  waiting_.pop_front();
  return next;
}

}  // namespace conversation
