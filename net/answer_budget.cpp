#include "net/answer_budget.h"

#include <algorithm>
#include <chrono>

#include "core/clock.h"

namespace net {

void AnswerBudget::Begin(bool listed, std::size_t seed, std::int32_t now) {
  End();
  listed_ = listed;
  names_ = 0;
  random_.seed(static_cast<std::minstd_rand::result_type>(seed));
  if (listed) joined_ = After(limits_.repetition, now);
}

Answer AnswerBudget::Ask(bool listed, std::size_t names, std::int32_t now) {
  names_ = names;
  if (!owed_ && TakeOne(now)) {
    RepeatLater(listed, now);
    return Answer::Now;
  }
  owedToListed_ = listed || (owed_ && owedToListed_);
  if (owed_) return Settle(now) ? Answer::Now : Answer::Coalesced;  // now if its timer is late
  owed_ = After(Delay(), now);
  again_.reset();
  return Answer::Owed;
}

bool AnswerBudget::Settle(std::int32_t now) {
  if (IsDue(owed_, now)) {
    owed_.reset();
    TakeOne(now);
    RepeatLater(owedToListed_, now);
    return true;
  }
  bool repeats = false;
  for (Time* time : {&again_, &joined_}) {
    if (!IsDue(*time, now)) continue;
    time->reset();
    repeats = names_ > limits_.fewNames;
  }
  return repeats;
}

// Repeated only between listed copies: a hidden one discards everything after ten seconds. While newcomers keep asking,
// each answer serves as the repetition of the one before.
void AnswerBudget::RepeatLater(bool listed, std::int32_t now) {
  if (listed_ && listed && names_ > limits_.fewNames) again_ = After(limits_.repetition, now);
}

std::optional<std::uint32_t> AnswerBudget::Wait(std::int32_t now) const {
  std::optional<std::uint32_t> wait;
  for (const Time& time : {owed_, again_, joined_})
    if (time) wait = std::min(Left(*time, now), wait.value_or(limits_.longestDelay));
  return wait;
}

bool AnswerBudget::TakeOne(std::int32_t now) {
  const std::uint32_t refillTime = std::max(limits_.refillTime, FullDelay());
  const std::uint32_t refills = core::TicksSince(refilled_, now) / refillTime;
  taken_ -= std::min<std::size_t>(taken_, refills);
  refilled_ = taken_ == 0 ? now : core::TicksAfter(refilled_, refills * refillTime);
  if (taken_ >= MaxAtOnce()) return false;
  ++taken_;
  return true;
}

std::size_t AnswerBudget::MaxAtOnce() const {
  return names_ <= limits_.fewNames ? limits_.maxAtOnce : limits_.maxAtOnceOfAll / names_;
}

std::uint32_t AnswerBudget::FullDelay() const {
  using namespace std::chrono;
  const auto delay = duration_cast<milliseconds>(microseconds(limits_.microsecondsPerName) * names_).count();
  return static_cast<std::uint32_t>(std::min<std::int64_t>(delay, limits_.longestDelay));
}

// Nobody needs the answer of a hidden copy soon, and it should come after all others: every copy that it reached
// earlier would have to answer twice.
AnswerLimits::Span AnswerBudget::Delay() const {
  const std::uint32_t longest = limits_.longestDelay;
  if (!listed_) return {longest - longest / 3, longest};
  const std::uint32_t max = std::max(FullDelay(), limits_.shortestDelay);
  return {max / 3, max};
}

// Nothing is further ahead than the longest delay unless the clock has jumped; it is due then.
std::uint32_t AnswerBudget::Left(std::int32_t time, std::int32_t now) const {
  const std::uint32_t left = core::TicksSince(now, time);
  return left <= limits_.longestDelay ? left : 0;
}

std::int32_t AnswerBudget::After(AnswerLimits::Span span, std::int32_t now) {
  return core::TicksAfter(now, std::uniform_int_distribution<std::uint32_t>(span.min, span.max)(random_));
}

}  // namespace net
