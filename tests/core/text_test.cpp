#include "core/text.h"

#include <gtest/gtest.h>

namespace core {
namespace {

using Fields = std::vector<std::string_view>;

TEST(Text, TrimTakesBlanksAlone) {
  EXPECT_EQ(Trim("  a b "), "a b");
  EXPECT_EQ(Trim(" \r\n "), "\r\n");
  EXPECT_EQ(Trim("   "), "");
}

TEST(Text, LowerCaseFollowsTheCodePage) {
  EXPECT_EQ(LowerCase("AZ[\xC9\xDE\xD7\x8A\x9F"), "az[\xE9\xFE\xD7\x9A\xFF");
  EXPECT_TRUE(EqualIgnoringCase("Ren\xC9", "rEN\xE9"));
  EXPECT_FALSE(EqualIgnoringCase("anna", "ann"));
  EXPECT_EQ(AsciiUpper("m/\xE9"), "M/\xE9");
}

TEST(Text, FieldsBetweenBars) {
  EXPECT_EQ(BarFields("F|anna|bob"), (Fields{"F", "anna", "bob"}));
  EXPECT_EQ(BarFields("F|anna|bob|"), (Fields{"F", "anna", "bob"}));
  EXPECT_EQ(BarFields("|a||"), (Fields{"", "a", ""}));
  EXPECT_EQ(BarFields(""), Fields{});
  EXPECT_EQ(BarField("user|users|online", 2), "online");
  EXPECT_EQ(BarField("user|users|online", 3), "");
  EXPECT_EQ(BarField("user", 0), "user");
}

}  // namespace
}  // namespace core
