#include "ui/conversation/alert_line.h"

#include <utility>

namespace conversation {

void AlertLine::Add(Alert alert) {
  if (waiting_.size() < kMaxWaitingAlerts) waiting_.push_back(std::move(alert));
}

std::optional<Alert> AlertLine::Next(std::size_t open) {
  if (open >= kMaxOpenPopups || waiting_.empty()) return std::nullopt;
  std::optional<Alert> next = std::move(waiting_.front());
  waiting_.pop_front();
  return next;
}

}  // namespace conversation
