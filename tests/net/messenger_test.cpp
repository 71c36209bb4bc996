#include "net/messenger.h"

#include <string>
#include <vector>

#include "core/globals.h"
#include "core/language.h"
#include "tests/net/recording_network.h"
#include "tests/support/desktop_test.h"

namespace net {
namespace {

using Lines = std::vector<std::string>;

class MessengerTest : public support::DesktopTest {
 protected:
  MessengerTest() {
    folder.Put("Lang.con", "Code,English\r\n10201,is now on the network");
    core::LoadLang();
    core::gCurName = "anna";
  }
  support::RecordingPort port;
  Messenger messenger{port};
};

TEST_F(MessengerTest, PutsTheOwnNameInFront) {
  messenger.SendCmd("");
  messenger.SendCmd("S/2");
  messenger.SendMsg("\xDEhi");
  messenger.SendPrivate("bob \xDEsee you");
  messenger.SendPrivate("bob");
  EXPECT_EQ(port.sent, (Lines{"anna|S/2", "anna|M/\xDEhi", "anna|P/\xDEsee you|bob", "anna|P/|"}));
}

TEST_F(MessengerTest, JoinsWithColourStateAndGreeting) {
  core::gColour = 255;
  core::gStatus = 2;
  support::Desktop().onPending = [&] { port.sent.push_back("events"); };
  messenger.OpenSocket();
  EXPECT_EQ(port.sent, (Lines{"open 1414", "events", "anna|C/ 255", "anna|S/2", "anna|M/anna is now on the network"}));

  core::gStarting = -1;
  core::gColour = -5;
  port.sent.clear();
  messenger.OpenSocket();
  EXPECT_EQ(port.sent, (Lines{"open 1414", "events", "anna|C/-5", "anna|S/2"}));

  port.sent.clear();
  messenger.CloseSocket();
  EXPECT_EQ(port.sent, (Lines{"anna|L/", "close"}));
}

TEST_F(MessengerTest, ARefusedPortSendsNothing) {
  port.refuses = true;
  EXPECT_EQ(support::ErrorOf([&] { messenger.OpenSocket(); }), 10048);
  EXPECT_EQ(port.sent, Lines{});
}

}  // namespace
}  // namespace net
