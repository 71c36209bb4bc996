#include "ui/conversation/layout_cost.h"

#include <algorithm>

namespace conversation {
namespace {

// Memory grows in pages, so one sample covers many lines.
constexpr std::size_t kSampleWeight = 64u << 10;

// Measurements that Portion considers.
constexpr std::size_t kRecentCount = 3;

// Assumed before the first measurement.
constexpr std::size_t kAssumedPortion = 4000, kAssumedCapacity = 1u << 20;

// Keeps results within a 32-bit std::size_t.
constexpr double kMaxResult = 1e9;

}  // namespace

void LayoutCost::AddTime(std::size_t weight, double milliseconds) {
  times_[count_++ % times_.size()] = std::max(milliseconds, 1e-6) / static_cast<double>(weight);
}

// Insertions that reuse freed memory show no growth, so the largest sample is the right one.
void LayoutCost::AddGrowth(std::size_t weight, std::size_t bytes) {
  weight_ += weight;
  grown_ += bytes;
  if (weight_ < kSampleWeight) return;
  memory_ = std::max(memory_, static_cast<double>(grown_) / static_cast<double>(weight_));
  weight_ = grown_ = 0;
}

std::size_t LayoutCost::Portion(double milliseconds) const {
  if (count_ == 0) return kAssumedPortion;
  double slowest = 0;
  for (std::size_t i = 0; i < std::min(kRecentCount, count_); ++i)
    slowest = std::max(slowest, times_[(count_ - 1 - i) % times_.size()]);
  return static_cast<std::size_t>(std::min(milliseconds / slowest, kMaxResult));
}

// Other programs can only make a measurement longer, so the shortest is used.
std::size_t LayoutCost::Capacity(double milliseconds) const {
  if (count_ == 0) return kAssumedCapacity;
  const auto measured = static_cast<std::ptrdiff_t>(std::min(count_, times_.size()));
  return static_cast<std::size_t>(
      std::min(milliseconds / *std::min_element(times_.begin(), times_.begin() + measured), kMaxResult));
}

std::size_t LayoutCost::MemoryOf(std::size_t weight) const {
  return static_cast<std::size_t>(std::min(memory_ * static_cast<double>(weight), kMaxResult));
}

}  // namespace conversation
