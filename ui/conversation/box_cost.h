// What a rich text box costs where the program runs. On one system a line takes a few microseconds and little more
// memory than its text, on another one fifty times as much, so both are measured while lines are put in.
#pragma once

#include <array>
#include <cstddef>

namespace conversation {

// Weights are those of WeightOf.
class BoxCost {
 public:
  // So much has been put into a box, in so much time.
  void Took(std::size_t weight, double milliseconds);

  // While so much was put in, the program's memory has grown by so many bytes.
  void Grew(std::size_t weight, std::size_t bytes);

  // What can be put in next in such a time. It goes by the slowest of the last times: of long lines a weight may cost
  // more than of others, and so does everything while other programs keep the processor busy.
  std::size_t Portion(double milliseconds) const;

  // What a box can lay out in such a time when nothing disturbs it.
  std::size_t Capacity(double milliseconds) const;

  // Bytes that so much takes in a box; 0 as long as too little was measured.
  std::size_t MemoryOf(std::size_t weight) const;

 private:
  std::array<double, 32> times_{};  // milliseconds for a weight of one, round and round
  std::size_t count_ = 0;
  std::size_t weight_ = 0, grown_ = 0;  // since the last figure
  double memory_ = 0;                   // bytes for a weight of one
};

}  // namespace conversation
