#include "net/answer_budget.h"

#include <gtest/gtest.h>

#include <climits>

#include "core/clock.h"

namespace net {
namespace {

constexpr AnswerLimits kLimits;
constexpr std::size_t kFew = kLimits.fewNames, kMany = 200;  // 200 names: a delay of 450 ms

class AnswerBudgetTest : public testing::Test {
 protected:
  AnswerBudgetTest() { budget.Begin(true, 1, now); }

  // Lets time pass until there is something to do, or for so long; the milliseconds that it took.
  std::uint32_t Pass(std::uint32_t most = 10000) {
    const std::uint32_t wait = std::min(budget.Wait(now).value_or(most), most);
    now = core::TicksAfter(now, wait);
    return wait;
  }

  void ForgetTheJoining() {
    Pass(kLimits.repeatBefore);
    budget.Settle(now);
  }

  std::int32_t now = INT_MAX - 700;  // the clock wraps around in each of these tests
  AnswerBudget budget{kLimits};
};

TEST_F(AnswerBudgetTest, AmongFewEverybodyIsAnsweredAtOnceUpToAFlood) {
  ForgetTheJoining();
  for (std::uint32_t i = 0; i < kLimits.maxAtOnce; ++i) EXPECT_EQ(budget.Ask(true, kFew, now), Answer::Now);
  EXPECT_EQ(budget.Ask(true, kFew, now), Answer::Owed);
  EXPECT_EQ(budget.Ask(true, kFew, now), Answer::Gathered);
  Pass();
  EXPECT_TRUE(budget.Settle(now));
  now = core::TicksAfter(now, 1000);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(budget.Ask(true, kFew, now), Answer::Now) << i;
}

TEST_F(AnswerBudgetTest, AmongManyOneAnswerServesAllAndIsRepeatedOnce) {
  ForgetTheJoining();
  EXPECT_EQ(budget.Wait(now), std::nullopt);
  for (int round = 0; round < 2; ++round) {  // the second one in place of the repetition
    EXPECT_EQ(budget.Ask(true, kMany, now), Answer::Owed);
    EXPECT_EQ(budget.Ask(false, kMany, now), Answer::Gathered);
    EXPECT_FALSE(budget.Settle(now));
    const std::uint32_t wait = Pass();
    EXPECT_GE(wait, 150u);
    EXPECT_LE(wait, 450u);
    EXPECT_TRUE(budget.Settle(now));
    EXPECT_FALSE(budget.Settle(now));
  }
  const std::uint32_t wait = Pass();
  EXPECT_GE(wait, kLimits.repeatAfter);
  EXPECT_LE(wait, kLimits.repeatBefore);
  EXPECT_TRUE(budget.Settle(now));
  EXPECT_EQ(budget.Wait(now), std::nullopt);
}

TEST_F(AnswerBudgetTest, HiddenNewcomersGetNoRepetition) {
  ForgetTheJoining();
  budget.Ask(false, kMany, now);
  Pass();
  EXPECT_TRUE(budget.Settle(now));
  EXPECT_EQ(budget.Wait(now), std::nullopt);
  budget.Begin(false, 1, now);
  EXPECT_EQ(budget.Wait(now), std::nullopt);
  EXPECT_EQ(budget.Ask(true, kMany, now), Answer::Owed);
  EXPECT_GE(Pass(), kLimits.longestDelay / 3);
  EXPECT_TRUE(budget.Settle(now));
  EXPECT_EQ(budget.Wait(now), std::nullopt);
}

TEST_F(AnswerBudgetTest, AJoiningIsRepeatedWhereManyAnswer) {
  for (const std::size_t names : {kFew, kFew + 1}) {
    budget.Begin(true, 1, now);
    if (budget.Ask(false, names, now) == Answer::Owed) {
      Pass();
      EXPECT_TRUE(budget.Settle(now));
    }
    EXPECT_GE(Pass(), 1u);
    EXPECT_EQ(budget.Settle(now), names > kFew);
  }
  budget.End();
  EXPECT_EQ(budget.Wait(now), std::nullopt);
}

// Sleep and resume: nobody waits longer than two seconds of a user's time for what was owed before.
TEST_F(AnswerBudgetTest, AClockThatJumpsNeitherSilencesNorFloods) {
  ForgetTheJoining();
  for (const int jump : {-3600000, 3600000, INT_MIN, INT_MAX, -60000}) {
    EXPECT_EQ(budget.Ask(false, kMany, now), Answer::Owed);
    now = core::TicksAfter(now, static_cast<std::uint32_t>(jump));
    EXPECT_LE(budget.Wait(now), kLimits.longestDelay);
    EXPECT_EQ(budget.Ask(false, kMany, now), Answer::Now) << jump;
    EXPECT_FALSE(budget.Settle(now));
    EXPECT_EQ(budget.Ask(true, kFew, now), Answer::Now) << jump;
  }
}

}  // namespace
}  // namespace net
