// Packets: parsing, and what a copy sends.
#include "net/packet.h"

#include <string>
#include <utility>
#include <vector>

#include "core/globals.h"
#include "core/language.h"
#include "net/datagram_port.h"
#include "net/messenger.h"
#include "support/recording_network.h"
#include "tests/support/desktop_test.h"
#include "tests/support/in_code_page.h"

namespace net {
namespace {

using namespace std::string_literals;
using Lines = std::vector<std::string>;

TEST(Packet, IsSplitAtTheFirstBar) {
  const struct {
    std::string packet, sender, kind, argument;
  } kRows[] = {
      {"anna|C/ 4", "anna", "C/", " 4"},
      {"anna|P/\xDF\x61|b|bob", "anna", "P/", "\xDF\x61|b|bob"},
      {"anna|M", "anna", "M", ""},
      {"anna", "anna", "", ""},
      {"|M/x", "", "M/", "x"},
      {"", "", "", ""},
      {"a\0b|M/\0"s, "a\0b"s, "M/", "\0"s},
  };
  for (const auto& row : kRows) {
    const Packet taken = SplitPacket(row.packet);
    EXPECT_EQ(taken.sender, row.sender) << row.packet;
    EXPECT_EQ(taken.kind, row.kind) << row.packet;
    EXPECT_EQ(taken.argument, row.argument) << row.packet;
  }
}

// The marks are lead bytes in three of these code pages.
TEST(Packet, TrailBytesDoNotSeparate) {
  const std::string name = "\x83|\x83\x60", text = "\xDE\x83|", packet = name + "|P/" + text + "|" + name;
  for (const int codePage : {932, 936, 950}) {
    const support::InCodePage in(codePage);
    const Packet taken = SplitPacket(packet);
    EXPECT_EQ(taken.sender, name) << codePage;
    EXPECT_EQ(taken.kind, kPrivate) << codePage;
    const PrivateText message = SplitPrivate(taken.argument);
    EXPECT_EQ(message.text, text) << codePage;
    EXPECT_EQ(message.recipient, name) << codePage;
    for (const char* argument : {"\xDE|bob", "|bob"}) EXPECT_EQ(SplitPrivate(argument).recipient, "bob") << codePage;
  }
}

TEST(Packet, PrivateCommandTakesTheRecipientUpToTheFirstBlank) {
  const struct {
    std::string_view line, command;
  } kRows[] = {
      {"bob \xDEsee you", "P/\xDEsee you|bob"},
      {"  bob    \xDEx  ", "P/\xDEx|bob"},
      {"bob \xDF  two blanks lead", "P/\xDF  two blanks lead|bob"},
      {"John Smith \xDFhello", "P/Smith \xDFhello|John"},
      {"bob", "P/|"},
      {"", "P/|"},
  };
  for (const auto& row : kRows) EXPECT_EQ(PrivateCommand(row.line), row.command) << row.line;
}

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

TEST_F(MessengerTest, StartsWithTheOwnName) {
  messenger.SendCmd("");
  messenger.SendCmd("S/2");
  messenger.SendMsg("\xDEhi");
  messenger.SendPrivate("bob \xDEsee you");
  EXPECT_EQ(port.sent, (Lines{"anna|S/2", "anna|M/\xDEhi", "anna|P/\xDEsee you|bob"}));
}

TEST_F(MessengerTest, JoinsWithColourStateAndGreeting) {
  core::gColour = 255;
  core::gStatus = 2;
  support::Desktop().onPending = [&] { port.sent.push_back("events"); };
  messenger.OpenSocket();
  EXPECT_EQ(port.sent, (Lines{"open 1414", "events", "anna|C/ 255", "anna|S/2", "anna|M/anna is now on the network"}));
  EXPECT_GE(std::exchange(port.wakeIn, 0), AnswerLimits().repetition.min);

  core::gStarting = -1;
  core::gColour = -5;
  core::gCurName = "_anna";
  port.sent.clear();
  messenger.OpenSocket();
  EXPECT_EQ(port.sent, (Lines{"open 1414", "events", "_anna|C/-5", "_anna|S/2"}));
  EXPECT_EQ(port.wakeIn, 0u) << "a hidden copy repeats nothing";

  port.sent.clear();
  messenger.CloseSocket();
  EXPECT_EQ(port.sent, (Lines{"_anna|L/", "close"}));
}

TEST_F(MessengerTest, AnOwedAnswerHasTheCurrentStateAndIsDroppedOnLeaving) {
  messenger.OpenSocket();
  const auto sentOnWaking = [this] {
    port.sent.clear();
    support::Desktop().ticks += static_cast<std::int32_t>(std::exchange(port.wakeIn, 0));
    messenger.SendOwed();
    return port.sent;
  };
  EXPECT_EQ(sentOnWaking(), Lines{});  // the joining is not repeated among few
  messenger.AnswerNewcomer(true, 100);
  EXPECT_EQ(port.sent, Lines{});
  core::gCurName = "berta";
  core::gStatus = 2;
  EXPECT_EQ(sentOnWaking(), (Lines{"berta|M/", "berta|C/ 0", "berta|S/2"}));
  messenger.AnswerNewcomer(true, 100);
  messenger.CloseSocket();
  EXPECT_EQ(sentOnWaking(), Lines{});
}

TEST(UnsentQueue, KeepsTextsBesideRepeatedAnswers) {
  UnsentQueue queue;
  for (int i = 0; i < 200; ++i) {
    for (const char* each : {"anna|M/", "anna|C/ 0", "anna|S/1"}) EXPECT_TRUE(queue.Add(each));
    EXPECT_EQ(queue.Add("anna|M/\xDEYes"), i < 97);
  }
  EXPECT_FALSE(queue.Add("anna|S/2"));
  int texts = 0;
  for (; queue.Front().ends_with("Yes"); queue.RemoveFront()) ++texts;
  EXPECT_EQ(texts, 97);
  EXPECT_TRUE(queue.Add(std::string(UnsentQueue::kMaxBytes - 24, 'x')));
  EXPECT_FALSE(queue.Add("x"));
  queue.Clear();
  EXPECT_TRUE(queue.Empty() && queue.Add(std::string(UnsentQueue::kMaxBytes, 'x')));
}

}  // namespace
}  // namespace net
