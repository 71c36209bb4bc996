// Alerts before they are drawn: the queue, and line breaking.
#include <gtest/gtest.h>

#include "core/text.h"
#include "ui/conversation/alert_queue.h"
#include "ui/conversation/popup_layout.h"

namespace conversation {
namespace {

using namespace std::string_literals;

TEST(AlertQueue, KeepsTheOldestInOrderAndForgetsABlockedSender) {
  AlertQueue queue;
  for (std::size_t i = 0; i < kMaxWaitingAlerts + 5; ++i) queue.Add({std::to_string(i), i % 2 ? "Mallory" : "anna", 0});
  EXPECT_FALSE(queue.Next(kMaxOpenPopups));
  EXPECT_EQ(queue.Next(kMaxOpenPopups - 1).value_or(Alert{}).text, "0");
  queue.Forget("mallory");
  EXPECT_EQ(queue.Waiting(), kMaxWaitingAlerts / 2 - 1);
  EXPECT_EQ(queue.Next(0).value_or(Alert{}).text, "2");
}

using Lines = std::vector<std::string_view>;

Lines InTen(std::string_view text) {
  return BreakLines(text, [](std::string_view line) { return core::LeadingCharacters(line, 10).size(); });
}

TEST(TextLines, EndAtBreaksAndWrapAtBlanksOrInsideLongWords) {
  EXPECT_EQ(InTen("one\r\ntwo\nthree\rfour"), (Lines{"one", "two", "three", "four"}));
  EXPECT_EQ(InTen("hello\r\n\r\n"), (Lines{"hello", ""})) << "a break at the end starts no line";
  EXPECT_EQ(InTen("\n\rx"), (Lines{"", "", "x"}));
  EXPECT_EQ(InTen(""), Lines{""});
  EXPECT_EQ(InTen("twelve men left"), (Lines{"twelve men", "left"}));
  EXPECT_EQ(InTen("I fourteenth men"), (Lines{"I", "fourteenth", "men"}));
  EXPECT_EQ(InTen("abcdefghijklmnopqrstuvwxyz"), (Lines{"abcdefghij", "klmnopqrst", "uvwxyz"}));
  EXPECT_EQ(InTen(" abcdefghijkl"), (Lines{" abcdefghi", "jkl"}));
  EXPECT_EQ(InTen("exactly10!\r\nnext"), (Lines{"exactly10!", "next"}));
}

}  // namespace
}  // namespace conversation
