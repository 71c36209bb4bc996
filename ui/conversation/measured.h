// What is done to a rich text box, measured.
#pragma once

#include <chrono>
#include <cstddef>

#include "ui/conversation/box_cost.h"

namespace conversation {

class Stopwatch {
 public:
  double Milliseconds() const {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin_).count();
  }

 private:
  std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};

// Of this thread so far. In steps of some ten milliseconds, but without the time that other programs take.
double ProcessorMilliseconds();

// Adds the cost of what is put in while it lives. The memory of a small text only now and then: asking for it takes a
// while.
class Measured {
 public:
  static constexpr std::size_t kSmall = 300;  // weight

  Measured(BoxCost& cost, std::size_t weight);
  Measured(const Measured&) = delete;
  Measured& operator=(const Measured&) = delete;
  ~Measured();

 private:
  BoxCost& cost_;
  const std::size_t weight_;
  const bool asksMemory_;
  const std::size_t memory_;  // of the program, bytes
  const Stopwatch sinceBegin_;
};

}  // namespace conversation
