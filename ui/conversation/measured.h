// Measures the time and memory that insertions into a rich edit control take.
#pragma once

#include <chrono>
#include <cstddef>

#include "ui/conversation/layout_cost.h"

namespace conversation {

class Stopwatch {
 public:
  double Milliseconds() const {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin_).count();
  }

 private:
  std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

// The processor time of this thread so far. Coarse (about ten milliseconds), but without the time of other programs.
double ProcessorMilliseconds();

// Measures the insertion made during its lifetime, and adds the result to `cost`. Samples memory only for some of the
// small texts, because the query is slow.
class InsertionMeter {
 public:
  static constexpr std::size_t kSmall = 300;  // weight

  InsertionMeter(LayoutCost& cost, std::size_t weight);
  InsertionMeter(const InsertionMeter&) = delete;
  InsertionMeter& operator=(const InsertionMeter&) = delete;
  ~InsertionMeter();

 private:
  LayoutCost& cost_;
  const std::size_t weight_;
  const bool samplesMemory_;
  const std::size_t memory_;  // of the process at the beginning, bytes
  const Stopwatch sinceBegin_;
};

}  // namespace conversation
