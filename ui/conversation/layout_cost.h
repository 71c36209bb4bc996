// The cost of the rich edit control, measured at run time: on some systems a line takes a few microseconds and little
// more memory than its text, on others fifty times as much of both.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>

namespace conversation {

// Weights are those of WeightOf.
class LayoutCost {
 public:
  // Records the time of an insertion.
  void AddTime(std::size_t weight, double milliseconds);

  // Records the growth of the program's memory during an insertion, bytes.
  void AddGrowth(std::size_t weight, std::size_t bytes);

  // The weight that can be inserted in this time, by the slowest of the last few measurements: long lines may cost more
  // per weight, and a busy processor slows everything down.
  std::size_t Portion(double milliseconds) const;

  // The weight that a control can lay out in this time on an idle machine.
  std::size_t Capacity(double milliseconds) const;

  // The memory for this weight in a control, bytes; 0 until enough was measured.
  std::size_t MemoryOf(std::size_t weight) const;

 private:
  std::array<double, 32> times_{};  // milliseconds for a weight of one, a ring buffer
  std::size_t count_ = 0;
  std::size_t weight_ = 0, grown_ = 0;  // since memory_ was last updated
  double memory_ = 0;                   // bytes for a weight of one
};

class Stopwatch {
 public:
  double Milliseconds() const {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin_).count();
  }

 private:
  std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

// The processor time of this thread so far; in Windows builds only. Coarse (about ten milliseconds), but without the
// time of other programs.
double ProcessorMilliseconds();

// Measures the insertion made during its lifetime, and adds the result to `cost`; in Windows builds only. Samples
// memory only for some of the small texts, because the query is slow.
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
