#include "core/splash_pulse.h"

#include <gtest/gtest.h>

namespace core {
namespace {

TEST(SplashPulse, GoesFromRedToGreenAndBack) {
  const struct {
    int counter, red, green;
  } rows[] = {{0, 255, 0}, {5, 243, 13}, {50, 128, 128}, {100, 0, 255}, {150, 128, 128}, {195, 243, 13}, {200, 255, 0}};
  for (const auto& row : rows) {
    EXPECT_EQ(PulseColour(row.counter).red, row.red) << row.counter;
    EXPECT_EQ(PulseColour(row.counter).green, row.green) << row.counter;
  }
  int ticks = 1;
  for (int counter = NextPulse(0); counter != 0; counter = NextPulse(counter)) ++ticks;
  EXPECT_EQ(ticks, 41);
}

}  // namespace
}  // namespace core
