#include "ui/conversation/alert_line.h"

#include <utility>

#include "core/text.h"

namespace conversation {

void AlertLine::Add(Alert alert) {
  if (waiting_.size() < kMaxWaitingAlerts) waiting_.push_back(std::move(alert));
}

void AlertLine::Forget(std::string_view sender) {
  std::erase_if(waiting_, [&](const Alert& alert) { return core::EqualIgnoringCase(alert.sender, sender); });
}

std::optional<Alert> AlertLine::Next(std::size_t open) {
  if (open >= kMaxOpenPopups || waiting_.empty()) return std::nullopt;
  std::optional<Alert> next = std::move(waiting_.front());
  waiting_.pop_front();
  return next;
}

}  // namespace conversation
