#include "core/start_up.h"

#include <algorithm>
#include <filesystem>

#include "core/clock.h"
#include "core/callback_guard.h"
#include "core/globals.h"
#include "core/message_box.h"
#include "tests/support/desktop_test.h"
#include "support/recording_program.h"

namespace core {
namespace {

using support::Desktop;
using Events = std::vector<std::string>;
using FileClock = std::filesystem::file_time_type::clock;

constexpr char kUser[] = "\"English\"\r\n0\r\n0,0,2505,4605\r\n\"Anna\",0,4,\"(B)\",1\r\n9,9,9,9\r\n0\r\n0\r\n";

class StartUpTest : public support::DesktopTest {
 protected:
  StartUpTest() {
    folder.Put("Lang.con", "Code,English\r\n1201,user|users|online\r\n8202,In use\r\n8209,Not loaded\r\n");
    folder.Put("User.ini", kUser);
  }

  // The events, with repeated "pending" merged.
  Events Happened() const {
    Events events;
    for (const std::string& event : Desktop().events) {
      if (event != "pending" || events.empty() || events.back() != "pending") events.push_back(event);
    }
    return events;
  }

  support::RecordingProgram program;
  mainwindow::UserRoster& roster = program.users;
};

TEST_F(StartUpTest, ListensUnderAHiddenNameThenJoins) {
  Desktop().onPending = [this] {
    if (!roster.HasRow("bob")) roster.AddUser("bob");
  };
  Desktop().ticks = 500;
  gStatus = 2;
  folder.Put("Quiabcdef", "left by a copy that was killed");
  std::filesystem::last_write_time(folder.Path("Quiabcdef"), FileClock::now() - std::chrono::hours(2));
  Main(program, "");
  EXPECT_EQ(Happened(), (Events{"move main", "show splash", "pending", "load main", "open _anna quietly", "pending",
                                "close _anna", "show tray", "load main", "open Anna", "hide splash"}));
  EXPECT_EQ(Log(), "Quillon loaded;  > Settings and language loaded;");
  EXPECT_EQ(Desktop().ticks, 500 + kListenTime);
  EXPECT_EQ(folder.Get("Quiabcdef"), "");
  EXPECT_FALSE(roster.HasRow("bob")) << "it joins with a fresh roster";
  EXPECT_EQ(gStatus, 0);
  EXPECT_EQ(gSafe, 0);
  EXPECT_FALSE(gVersion.empty());
  EXPECT_EQ((WindowBounds{gChatLeft, gChatTop, gChatWidth, gChatHeight}), (WindowBounds{6430, 3860, 2500, 3800}));
}

TEST_F(StartUpTest, ASecondCopyEndsAtOnce) {
  Desktop().anotherCopyRuns = true;
  Main(program, "");
  EXPECT_EQ(Happened(), (Events{"box Previous Instance", "end"}));
  EXPECT_EQ(Log(), "");
}

TEST_F(StartUpTest, ANameInUseOpensTheOptions) {
  Desktop().onPending = [this] {
    if (Desktop().ticks == kListenTime / 2) roster.AddUser("ANNA");
  };
  program.onOptions = [] {
    EXPECT_EQ(gCurName, "Anna");
    EXPECT_EQ(gStarting, -1);
    gCurName = gUserName = "Anna2";
  };
  Main(program, "");
  const Events events = Happened();
  EXPECT_EQ(Events(events.begin() + 6, events.end()),
            (Events{"box In use", "options", "close Anna2", "show tray", "load main", "open Anna2", "hide splash"}));
}

TEST_F(StartUpTest, AFailureIsLoggedAndShown) {
  program.onOpenSocket = [] { throw RuntimeError(10048, "Address already in use"); };
  Main(program, "");
  EXPECT_EQ(Happened(), (Events{"move main", "show splash", "pending", "load main", "open _anna quietly",
                                "box Not loaded: & 10048: Address already in use"}));
  EXPECT_EQ(Log(), "Quillon loaded;  > Settings and language loaded;Unable to load: 10048: Address already in use;");
  EXPECT_EQ(gStarting, -1);
  EXPECT_EQ(gCurName, "Anna") << "a logoff must not save the hidden name";
  program.onOpenSocket = [] { throw std::bad_alloc(); };
  Main(program, "");
  EXPECT_EQ(Happened().back(), "box Not loaded: & 7: Out of memory");
}

TEST_F(StartUpTest, ALogoffWhileListeningKeepsTheScreenName) {
  program.onOpenSocket = [this] {
    if (gCurName == "_anna") ShutDown(program);
  };
  Main(program, "run /SaFer now");
  EXPECT_EQ(Happened()[5], "restore main");
  EXPECT_EQ(Happened()[6], "close _anna") << "it leaves under the name in use";
  EXPECT_NE(folder.Get("User.ini").find("\"Anna\",0,4"), std::string::npos);
  EXPECT_EQ(gSafe, 1);
}

TEST_F(StartUpTest, AWrappingTickCountEndsTheWait) {
  Desktop().ticks = 2147483640;
  Main(program, "");
  EXPECT_EQ(Happened().back(), "box Not loaded: & 6: Overflow");
}

TEST_F(StartUpTest, StartsInAnUnwritableFolder) {
  folder.PutFolder("Log.txt");
  folder.PutFolder("User.ini");
  Main(program, "");
  EXPECT_EQ(Happened().back(), "box : & 75: Path/File access error") << "no text is loaded before the settings are";
  EXPECT_EQ(gUserName, "anna");
  ShutDown(program);
  EXPECT_EQ(Desktop().boxes.size(), Desktop().posted.size() + 1) << "nothing is lost without the log";
}

// An open message box would keep an unattended start from joining.
TEST_F(StartUpTest, PostedBoxesWaitUntilTheNetworkIsJoined) {
  folder.PutFolder("Log.txt");
  program.onOpenSocket = [] {
    if (gStarting != 0) Guarded([] { throw std::bad_alloc(); });
  };
  Main(program, "");
  EXPECT_TRUE(Desktop().boxes.empty());
  EXPECT_EQ(Happened().back(), "hide splash");
  ShutDown(program);
  EXPECT_EQ(Desktop().boxes.size(), 4u);  // one for each line that could not be written, and one for the failure
}

TEST_F(StartUpTest, ShutsDownInOrderAndOnce) {
  gCurName = "Anna";
  gRunAtLogon = 1;
  Desktop().onPending = [this] { ShutDown(program); };
  ShutDown(program);
  EXPECT_EQ(Happened(),
            (Events{"restore main", "close Anna", "remove tray", "run " + folder.Path("Quillon"), "pending", "end"}));
  EXPECT_EQ(Log(), "Quillon unloaded;");
  folder.PutFolder("User.ini");
  ShutDown(program);
  EXPECT_EQ(std::ranges::count(Happened(), "close Anna"), 2) << "although the settings cannot be saved";
}

}  // namespace
}  // namespace core
