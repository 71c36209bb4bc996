// Texts, and the numbers in them.
#include "core/text.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

#include "core/numbers.h"
#include "tests/support/error_of.h"
#include "tests/support/in_code_page.h"

namespace core {
namespace {

using support::ErrorOf;
using Fields = std::vector<std::string_view>;

TEST(Text, LowerCaseFollowsTheCodePage) {
  EXPECT_EQ(LowerCase("AZ[\xC9\xDE\xD7\x8A\x9F"), "az[\xE9\xFE\xD7\x9A\xFF");
  EXPECT_TRUE(EqualIgnoringCase("Ren\xC9", "rEN\xE9"));
  EXPECT_EQ(UpperCase("\xFF"), "\x9F");
}

TEST(Text, FieldsBetweenBars) {
  EXPECT_EQ(BarFields("F|anna||bob|"), (Fields{"F", "anna", "", "bob"}));
  EXPECT_EQ(BarFields(""), Fields{});
  EXPECT_EQ(BarField("user|users|online", 2), "online");
  EXPECT_EQ(BarField("user|users|online", 3), "");
}

// For each code page a capital and its lower-case form, a character with "|" or the like as its trail byte, and two
// characters whose trail bytes are a Latin letter in both cases.
const struct TwoBytes {
  int codePage;
  std::string capital, small, other, upperByte, lowerByte;
} kTwoBytes[] = {
    {932, "\x82\x60", "\x82\x81", "\x83|", "\x83\x41", "\x83\x61"},
    {936, "\xA3\xC1", "\xA3\xE1", "\x81|", "\x81\x41", "\x81\x61"},
    {949, "\xA3\xC1", "\xA3\xE1", "\xB0\xA1", "\x81\x41", "\x81\x61"},
    {950, "\xA2\xE8", "\xA3\x43", "\xA5|", "\xA4\x41", "\xA4\x61"},
};

TEST(Text, DoubleByteCharactersStayWhole) {
  for (const TwoBytes& page : kTwoBytes) {
    const support::InCodePage in(page.codePage);
    SCOPED_TRACE(page.codePage);
    EXPECT_EQ(LowerCase("A" + page.capital + page.upperByte), "a" + page.small + page.upperByte);
    EXPECT_EQ(UpperCase(page.small), page.capital);
    EXPECT_TRUE(EqualIgnoringCase(page.capital + "x", page.small + "X"));
    EXPECT_EQ(NameHash()(page.capital + "x"), NameHash()(page.small + "X"));
    EXPECT_FALSE(EqualIgnoringCase(page.upperByte, page.lowerByte));
    const std::string group = page.other + "|" + page.upperByte + "|";
    EXPECT_EQ(BarFields(group), (Fields{page.other, page.upperByte}));
    EXPECT_EQ(BarField(group, 1), page.upperByte);
    EXPECT_EQ(Find("a" + page.upperByte + "A", "A"), 3u);
    EXPECT_EQ(LeadingCharacters("a" + page.other + "b", 2), "a");
    EXPECT_EQ(FirstCharacter(page.other + "b"), page.other);
  }
}

// Bytes from the network may be invalid.
TEST(Text, InvalidBytesAreUnchanged) {
  const support::InCodePage korean(949);
  EXPECT_EQ(BarFields("Ren\xE9|A"), (Fields{"Ren\xE9", "A"})) << "no character of this code page ends in a bar";
  EXPECT_EQ(LowerCase("A\xE9 \xE9"), "a\xE9 \xE9");
  EXPECT_EQ(FirstCharacter("\xE9"), "\xE9");
  const support::InCodePage japanese(932);
  EXPECT_EQ(LowerCase("\x82\xFFZ\xA0\x82"), "\x82\xFFz\xA0\x82");
}

TEST(Numbers, TolerantReadingIgnoresTheRest) {
  const auto expect = [](double number, std::initializer_list<std::string_view> texts) {
    for (const std::string_view text : texts) EXPECT_DOUBLE_EQ(TolerantNumber(text), number) << text;
  };
  expect(0, {"", "abc", "--5", ".", "0x10", "inf", "\xA0 1", "0e99999", "1e-9999"});
  expect(1, {"1x", "1 ", "1\r2", "1,5", {"1\0002", 3}});
  expect(-5, {"-5", "- 5"});
  expect(123, {"1\t2\n3"});
  expect(1.2, {"1.2.3"});
  expect(1e20, {"99999999999999999999"});
  expect(2, {"2e"});
  expect(20, {"2 e 1"});
  expect(255, {"&HFF", "&HFF:"});
  expect(10, {"&HA", "&ha"});
  expect(15, {"&h fg", "&O17"});
  for (const char* text : {"&H", "&0", "\t1", "1\t", "1 2"})
    EXPECT_EQ(ErrorOf([=] { StrictNumber(text); }), 13) << text;
}

// A packet can have this many; the time must be linear.
TEST(Numbers, ThousandsOfDigits) {
  EXPECT_EQ(TolerantNumber(std::string(60000, '9')), std::numeric_limits<double>::infinity());
  EXPECT_DOUBLE_EQ(TolerantNumber("0." + std::string(60000, '0') + "7e60001"), 7);
}

TEST(Numbers, RoundsHalfToEvenAndRefusesWhatDoesNotFit) {
  using Doubles = std::numeric_limits<double>;
  for (const auto& [number, rounded] : {std::pair{0.5, 0}, {1.5, 2}, {-2.5, -2}, {32767.4, 32767}})
    EXPECT_EQ(ToInt16(number), rounded);
  for (const double number : {32767.5, -32769.0}) EXPECT_EQ(ErrorOf([=] { ToInt16(number); }), 6);
  EXPECT_EQ(ToInt32(-2147483648.0), std::numeric_limits<std::int32_t>::min());
  for (const double number : {2147483648.0, Doubles::infinity(), Doubles::quiet_NaN()})
    EXPECT_EQ(ErrorOf([=] { ToInt32(number); }), 6);
}

}  // namespace
}  // namespace core
