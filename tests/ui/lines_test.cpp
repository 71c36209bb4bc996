// Alerts before they are drawn: the queue, and line breaking.
#include <gtest/gtest.h>

#include <algorithm>

#include "core/text.h"
#include "ui/conversation/alert_queue.h"
#include "ui/conversation/text_lines.h"

namespace conversation {
namespace {

using namespace std::string_literals;

TEST(AlertQueue, ShowsUpToItsLimitAndKeepsTheOrderOfTheRest) {
  AlertQueue line;
  line.Add({"first", "anna", 0});
  line.Add({"second", "bob", 1});
  EXPECT_FALSE(line.Next(kMaxOpenPopups));
  const auto first = line.Next(kMaxOpenPopups - 1);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->text, "first");
  EXPECT_EQ(line.Next(0)->sender, "bob");
}

TEST(AlertQueue, DropsAlertsWhenFull) {
  AlertQueue line;
  for (std::size_t i = 0; i < kMaxWaitingAlerts + 5; ++i) line.Add({std::to_string(i), "anna", 0});
  std::string last;
  std::size_t shown = 0;
  for (; const auto alert = line.Next(0); ++shown) last = alert->text;
  EXPECT_EQ(shown, kMaxWaitingAlerts);
  EXPECT_EQ(last, std::to_string(kMaxWaitingAlerts - 1));
}

TEST(AlertQueue, ForgetsABlockedSenderIgnoringCase) {
  AlertQueue line;
  for (const char* sender : {"mallory", "anna", "Mallory"}) line.Add({"text", sender, 0});
  line.Forget("mallory");
  EXPECT_EQ(line.Next(0)->sender, "anna");
  EXPECT_FALSE(line.Next(0));
}

using Lines = std::vector<std::string_view>;

Lines Wide(std::string_view text) {
  return BreakLines(text, [](std::string_view line) { return line.size(); });
}

TEST(TextLines, EndAtEveryKindOfBreakAndNowhereElse) {
  EXPECT_EQ(Wide("one\r\ntwo\nthree\rfour"), (Lines{"one", "two", "three", "four"}));
  EXPECT_EQ(Wide("hello\r\n"), Lines{"hello"}) << "a break at the end starts no line";
  EXPECT_EQ(Wide("hello\r\n\r\n"), (Lines{"hello", ""}));
  EXPECT_EQ(Wide("\n\rx"), (Lines{"", "", "x"}));
  EXPECT_EQ(Wide(""), Lines{""});
}

Lines InTen(std::string_view text) {
  return BreakLines(text, [](std::string_view line) { return core::LeadingLetters(line, 10).size(); });
}

TEST(TextLines, WrapAtBlanksAndInsideWordsThatAreTooLong) {
  EXPECT_EQ(InTen("twelve men left"), (Lines{"twelve men", "left"}));
  EXPECT_EQ(InTen("see thirteen men"), (Lines{"see", "thirteen", "men"}));
  EXPECT_EQ(InTen("abcdefghijklmnopqrstuvwxyz"), (Lines{"abcdefghij", "klmnopqrst", "uvwxyz"}));
  EXPECT_EQ(InTen(" abcdefghijkl"), (Lines{" abcdefghi", "jkl"}));
  EXPECT_EQ(InTen("exactly10!\r\nnext"), (Lines{"exactly10!", "next"}));
}

}  // namespace
}  // namespace conversation
