// Decides when a copy answers newcomers, by a token bucket. While this budget lasts, each of their packets is answered
// at once. An answer is a broadcast, so one answer serves all newcomers heard before it: beyond the budget an answer is
// owed, to be sent within two seconds, at a random time, and it serves everybody who asked until then.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>

namespace net {

// Times are milliseconds. bench/segment_simulation measures these values on segments of two to a thousand copies.
struct AnswerLimits {
  struct Span {
    std::uint32_t min, max;
  };

  // Up to this many names (including the copy's own, and perhaps one that ended without leaving) everybody answers
  // everything: a start among n copies takes about 9 n^2 packets.
  std::size_t fewNames = 6;

  // Limits the immediate answers to a flood of newcomers; an answer is three packets. Of five copies, four that start
  // together need 68 answers from the one that runs.
  std::uint32_t maxAtOnce = 72;

  // Among more names, all copies together answer this many at once: 255 packets, since the smallest receive buffer in
  // use, 64 kB, holds 256. Larger budgets were worse: with 16 for each copy among up to forty, and one second's worth
  // beyond, a start among twenty takes 72 packets for each copy, not 37, and two hundred old machines lose 160 of the
  // answers.
  std::size_t maxAtOnceOfAll = 85;

  // Refills one answer; among many names a refill takes as long as the longest delay below.
  std::uint32_t refillTime = 1000 / 16;

  // An owed answer is sent after a random time between a third of the delay and the whole, and the delay is
  // proportional to the number of names. So all copies together send about 2,000 packets a second: asked once, they
  // spread over two thirds of the delay; asked continuously, each answers every two thirds of it on average.
  std::uint32_t microsecondsPerName = 2250;
  // Long enough to serve all packets of one start, or of leaving and joining again, with one answer.
  std::uint32_t shortestDelay = 250;
  // Two seconds, less the latency of a timer on a busy machine.
  std::uint32_t longestDelay = 1800;

  // Packets get lost, and among a thousand receivers almost surely somewhere. So a copy repeats its answer once after
  // it has joined, and after it has answered somebody who joined.
  Span repetition{.min = 1000, .max = 1500};
};

enum class Answer {
  Now,       // to be sent at once
  Owed,      // to be sent by Settle
  Coalesced  // served by the answer that is owed already
};

// The time is an argument, a tick count as core::TickCount returns it. It may wrap around, or jump when the machine
// sleeps; an answer is then early.
class AnswerBudget {
 public:
  explicit AnswerBudget(const AnswerLimits& limits) : limits_(limits) {}

  // Begins a stay on the network, under a listed or a hidden name. Different seeds make copies choose different times.
  void Begin(bool listed, std::size_t seed, std::int32_t now);

  // Ends the stay and drops an owed answer.
  void End() { owed_ = again_ = joined_ = std::nullopt; }

  // Requests an answer to a newcomer, who is listed or hidden. `names` is the number of names heard.
  Answer Ask(bool listed, std::size_t names, std::int32_t now);

  // True when an answer is to be sent now.
  bool Settle(std::int32_t now);

  // Milliseconds until Settle must be called; nothing when nothing is due.
  std::optional<std::uint32_t> Wait(std::int32_t now) const;

 private:
  using Time = std::optional<std::int32_t>;

  bool TakeOne(std::int32_t now);
  std::size_t MaxAtOnce() const;
  std::uint32_t FullDelay() const;
  AnswerLimits::Span Delay() const;
  void RepeatLater(bool listed, std::int32_t now);
  std::uint32_t Left(std::int32_t time, std::int32_t now) const;
  bool IsDue(Time time, std::int32_t now) const { return time && Left(*time, now) == 0; }
  std::int32_t After(AnswerLimits::Span span, std::int32_t now);

  AnswerLimits limits_;
  std::minstd_rand random_;
  bool listed_ = false;    // this copy's own name
  std::size_t names_ = 0;  // at the last question
  std::size_t taken_ = 0;  // immediate answers, less those refilled
  std::int32_t refilled_ = 0;

  // When the answer that is owed, the repetition of the last one, and that of the joining are due.
  Time owed_, again_, joined_;
  bool owedToListed_ = false;
};

}  // namespace net
