#include "core/numbers.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/desktop_test.h"

namespace core {
namespace {

using support::ErrorOf;

TEST(Numbers, TolerantReadingTakesWhatItCan) {
  const struct {
    std::string text;
    double value;
  } rows[] = {
      {"", 0},
      {"abc", 0},
      {" 4", 4},
      {"1x", 1},
      {"1 ", 1},
      {"1\t2\n3", 123},
      {"1\r2", 1},
      {"-5", -5},
      {"- 5", -5},
      {"--5", 0},
      {".5", 0.5},
      {"1.2.3", 1.2},
      {".", 0},
      {"2e3", 2000},
      {"2D-1", 0.2},
      {"2e", 2},
      {"2 e 1", 20},
      {"&HFF", 255},
      {"&h fg", 15},
      {"&O17", 15},
      {"0x10", 0},
      {"1,5", 1},
      {"inf", 0},
      {"\xA0 1", 0},
      {"0e99999", 0},
      {"1e-9999", 0},
      {std::string("1\0002", 3), 1},
      {"12345678901234567890123", 12345678901234567890123.0},
  };
  for (const auto& row : rows) EXPECT_DOUBLE_EQ(TolerantNumber(row.text), row.value) << row.text;
  EXPECT_EQ(TolerantNumber("1e99999999999"), std::numeric_limits<double>::infinity());
}

// A packet can hold this much; the time must not grow with the square of it.
TEST(Numbers, DigitsWithoutEnd) {
  EXPECT_EQ(TolerantNumber(std::string(60000, '9')), std::numeric_limits<double>::infinity());
  EXPECT_DOUBLE_EQ(TolerantNumber("0." + std::string(60000, '0') + "7e60001"), 7);
}

TEST(Numbers, StrictReadingWantsOneWholeNumber) {
  EXPECT_EQ(StrictNumber(" 1001 "), 1001);
  EXPECT_EQ(StrictNumber("-2.5e1"), -25);
  EXPECT_EQ(StrictNumber("&H10"), 16);
  for (const char* text : {"", "  ", "English", "1x", "1 2", "1,5", "-", ".", "1e", "&H", "\t1", "1\t"}) {
    EXPECT_EQ(ErrorOf([&] { StrictNumber(text); }), 13) << '"' << text << '"';
  }
}

TEST(Numbers, RoundsHalfToEvenAndRefusesWhatDoesNotFit) {
  EXPECT_EQ(ToInt16(0.5), 0);
  EXPECT_EQ(ToInt16(1.5), 2);
  EXPECT_EQ(ToInt16(-2.5), -2);
  EXPECT_EQ(ToInt16(32767.4), 32767);
  EXPECT_EQ(ErrorOf([] { ToInt16(32767.5); }), 6);
  EXPECT_EQ(ErrorOf([] { ToInt16(-32769); }), 6);
  EXPECT_EQ(ToInt32(-2147483648.0), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ErrorOf([] { ToInt32(2147483648.0); }), 6);
  EXPECT_EQ(ErrorOf([] { ToInt32(std::numeric_limits<double>::infinity()); }), 6);
  EXPECT_EQ(ErrorOf([] { ToInt32(std::numeric_limits<double>::quiet_NaN()); }), 6);
}

TEST(Numbers, GeneralTextKeepsThePlaceOfTheSign) {
  EXPECT_EQ(GeneralText(0), " 0");
  EXPECT_EQ(GeneralText(255), " 255");
  EXPECT_EQ(GeneralText(std::numeric_limits<std::int32_t>::min()), "-2147483648");
}

}  // namespace
}  // namespace core
