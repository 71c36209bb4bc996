// When a copy answers newcomers: at once and each of their packets, while its budget lasts. An answer is a broadcast:
// one that goes out after ten newcomers were heard serves all ten. So beyond the budget an answer is owed: it follows
// within two seconds, at a random time, and serves everybody who asked until then.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>

namespace net {

// Times are milliseconds. bench/segment_simulation shows what these numbers do to segments of two to a thousand copies.
struct AnswerLimits {
  struct Span {
    std::uint32_t least, most;
  };

  // With up to so many names (the own one is among them, and perhaps one that ended without leaving) a start costs
  // little although everybody answers everything: about 9 n^2 packets among n copies.
  std::size_t fewNames = 6;

  // Even then an endless stream of newcomers must not be answered with three times as much. Five copies that are
  // switched on together take 68 answers from one that runs already.
  std::uint32_t maxAtOnce = 72;

  // Among more, all copies together answer so many at once: 255 packets, since the smallest receive buffer in use,
  // 64 kB, holds 256. With 16 for each copy among up to forty, and one second's worth beyond, a start among twenty
  // would take 72 packets for each copy, not 37, and among two hundred old machines would lose 160 of the answers.
  std::size_t maxAtOnceOfAll = 85;

  // Refills one of them; among many it takes as long as the longest delay below.
  std::uint32_t refillTime = 1000 / 16;

  // An answer is owed for a third to the whole of a delay that grows with the names. Then all copies together send
  // about 2,000 packets a second: when asked once they spread over two thirds of it, and when asked all the time they
  // answer each two thirds of it, on average.
  std::uint32_t microsecondsPerName = 2250;
  // The packets of one start arrive within milliseconds, and so do leaving and joining again: one answer for all.
  std::uint32_t shortestDelay = 250;
  // Two seconds, less what the timer of a busy machine may be late.
  std::uint32_t longestDelay = 1800;

  // Nobody notices a lost packet, and where a thousand hear it one of them will lose it. So a copy that has joined, or
  // has answered somebody who did, says its presence once more.
  Span repetition{.least = 1000, .most = 1500};
};

enum class Answer {
  Now,      // to be sent at once
  Owed,     // from now on, until Settle
  Gathered  // served by what is owed already
};

// The clock is an argument: a tick count as core::TickCount gives it. It may wrap around or jump, as it does when the
// machine sleeps; then an answer comes early.
class AnswerBudget {
 public:
  explicit AnswerBudget(const AnswerLimits& limits) : limits_(limits) {}

  // A stay on the network begins, under a name that others list or under a hidden one. Copies with different seeds
  // choose different times.
  void Begin(bool listed, std::size_t seed, std::int32_t now);

  // The stay ends, and with it what is owed.
  void End() { owed_ = again_ = joined_ = std::nullopt; }

  // A newcomer wants an answer: one who is listed from now on, or a hidden one. `names` tells how many are heard.
  Answer Ask(bool listed, std::size_t names, std::int32_t now);

  // True when an answer is to be sent now.
  bool Settle(std::int32_t now);

  // Milliseconds until Settle is to be called; nothing when there is no need.
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
  bool listed_ = false;    // the own name
  std::size_t names_ = 0;  // at the last question
  std::size_t taken_ = 0;  // answers at once, less the refilled ones
  std::int32_t refilled_ = 0;

  // When an answer is due, when the last one is repeated, and when the joining is.
  Time owed_, again_, joined_;
  bool owedToListed_ = false;
};

}  // namespace net
