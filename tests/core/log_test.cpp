#include "core/log.h"

#include "core/logon_entry.h"
#include "tests/support/desktop_test.h"

namespace core {
namespace {

using support::Desktop;

class LogTest : public support::DesktopTest {};

TEST_F(LogTest, OneQuotedLineForEachEvent) {
  WriteLog("Quillon loaded");
  WriteLog("  > raw \"quotes\"\r\nand lines");
  EXPECT_EQ(folder.Get("Log.txt"),
            "\"15/11/2026 18:46:02 Quillon loaded\"\r\n"
            "\"15/11/2026 18:46:02   > raw \"quotes\"\r\nand lines\"\r\n");
}

TEST_F(LogTest, TellsTheUserWhenItCannotWrite) {
  folder.PutFolder("Log.txt");
  WriteLog("lost");
  WriteLog("lost too");
  ASSERT_EQ(Desktop().posted.size(), 2u);
  EXPECT_TRUE(Desktop().boxes.empty());  // not before the top of the message loop
  EXPECT_EQ(Desktop().posted[0].text,
            "Error writing to Log file. Text to write:\r\n\r\nlost\r\n\r\n"
            "Please contact Vextant at support@vextant.example");
  EXPECT_EQ(Desktop().posted[0].title, "Quillon");
}

TEST_F(LogTest, LogonEntryFollowsItsFlag) {
  for (const int flag : {0, 1, 2, -1}) SetRunAtLogon(static_cast<std::int16_t>(flag));
  EXPECT_EQ(Desktop().events, (std::vector<std::string>{"no run", "run " + folder.Path("Quillon")}));
}

}  // namespace
}  // namespace core
