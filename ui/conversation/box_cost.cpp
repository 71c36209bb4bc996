#include "ui/conversation/box_cost.h"

#include <algorithm>

namespace conversation {
namespace {

// Memory grows in steps, so a figure needs the growth of many lines.
constexpr std::size_t kEnough = 64u << 10;

constexpr std::size_t kLast = 3;

// Assumed before the first measurement.
constexpr std::size_t kFirstPortion = 4000, kFirstCapacity = 1u << 20;

constexpr double kMaxCount = 1e9;

}  // namespace

void BoxCost::Took(std::size_t weight, double milliseconds) {
  times_[count_++ % times_.size()] = std::max(milliseconds, 1e-6) / static_cast<double>(weight);
}

// Freed memory is reused without growth, so the largest figure is correct.
void BoxCost::Grew(std::size_t weight, std::size_t bytes) {
  weight_ += weight;
  grown_ += bytes;
  if (weight_ < kEnough) return;
  memory_ = std::max(memory_, static_cast<double>(grown_) / static_cast<double>(weight_));
  weight_ = grown_ = 0;
}

std::size_t BoxCost::Portion(double milliseconds) const {
  if (count_ == 0) return kFirstPortion;
  double slowest = 0;
  for (std::size_t i = 0; i < std::min(kLast, count_); ++i)
    slowest = std::max(slowest, times_[(count_ - 1 - i) % times_.size()]);
  return static_cast<std::size_t>(std::min(milliseconds / slowest, kMaxCount));
}

// Other programs can only make a measurement longer, so the shortest is used.
std::size_t BoxCost::Capacity(double milliseconds) const {
  if (count_ == 0) return kFirstCapacity;
  const auto measured = static_cast<std::ptrdiff_t>(std::min(count_, times_.size()));
  return static_cast<std::size_t>(
      std::min(milliseconds / *std::min_element(times_.begin(), times_.begin() + measured), kMaxCount));
}

std::size_t BoxCost::MemoryOf(std::size_t weight) const {
  return static_cast<std::size_t>(std::min(memory_ * static_cast<double>(weight), kMaxCount));
}

}  // namespace conversation
