// To whom an alert goes, who takes part in a chat, and to whom its lines go.
#include "ui/conversation/participants.h"

#include "core/globals.h"
#include "core/language.h"
#include "support/recording_network.h"
#include "tests/support/desktop_test.h"
#include "support/fake_roster.h"
#include "ui/conversation/recipients.h"
#include "ui/conversation/users_online.h"

namespace conversation {
namespace {

using Texts = std::vector<std::string>;

class ParticipantsTest : public support::DesktopTest {
 protected:
  ParticipantsTest() {
    core::gCurName = "me";
    for (const char* name : {"(All)", "Anna", "bob", "(Friends)", "me"}) Online(name);
  }

  void Online(const char* name) { online.Add({.text = name, .key = name}); }

  std::string List() const {
    std::string list;
    for (std::size_t i = 0; i < chat.Rows().Count(); ++i)
      list += chat.Rows().At(i).text + '=' + std::to_string(chat.Rows().At(i).icon) + ' ';
    return list;
  }

  const Texts& Sent(std::string_view line) {
    port.sent.clear();
    chat.Send(line, messenger);
    return port.sent;
  }

  support::FakeRoster roster;
  toolkit::ListRows online;
  Participants chat{roster, online};
  support::RecordingPort port;
  net::Messenger messenger{port};
};

TEST_F(ParticipantsTest, EachOnceWhateverTheCase) {
  chat.AddUser("anna");
  chat.AddUser("ANNA");
  chat.AddUsers("|bob||Bob|(all)|gone|");
  EXPECT_EQ(List(), "anna=2 bob=2 (all)=1 gone=3 ") << "everybody does not replace the others";
  chat.RemoveUser("BOB");
  chat.RemoveUser("nobody");
  EXPECT_EQ(List(), "anna=2 (all)=1 gone=3 ");
  EXPECT_EQ(Log(),
            "anna Added to chat window;bob Added to chat window;(all) Added to chat window;"
            "gone Added to chat window;BOB Removed from chat window;");
}

TEST_F(ParticipantsTest, AStrangerWithoutANameIsAUserLikeAnyOther) {
  chat.AddUsers("");
  EXPECT_EQ(List(), "");
  chat.AddUsers("|");
  EXPECT_TRUE(chat.Takes(""));
}

TEST_F(ParticipantsTest, TakesTheLinesOfItsOwn) {
  EXPECT_FALSE(chat.Takes("anna"));
  chat.AddUser("anna");
  EXPECT_TRUE(chat.Takes("ANNA"));
  EXPECT_FALSE(chat.Takes("bob"));
  chat.AddUser("(All)");
  EXPECT_TRUE(chat.Takes("bob"));
}

TEST_F(ParticipantsTest, IconsFollowPresenceAndBlocking) {
  chat.AddUsers("anna|bob|zoe|");
  EXPECT_EQ(List(), "anna=2 bob=2 zoe=3 ");
  Online("Zoe");
  roster.blocked = {"bob"};
  chat.RefUserList();
  EXPECT_EQ(List(), "anna=2 bob=3 zoe=2 ");
  online.Remove(*online.FindText("Anna"));
  chat.RefUserList();
  EXPECT_EQ(List(), "anna=3 bob=3 zoe=2 ");
  const int before = roster.asked;
  for (int packet = 0; packet < 100; ++packet) chat.RefUserList();
  EXPECT_EQ(roster.asked, before) << "nothing has changed";
}

TEST_F(ParticipantsTest, LinesGoToEachOrOnceToEverybody) {
  EXPECT_EQ(Sent("hi"), Texts{});
  chat.AddUsers("anna|bob|");
  EXPECT_EQ(Sent("  hi  "), (Texts{"me|P/\xDE  hi|anna", "me|P/\xDE  hi|bob"}));
  chat.AddUser("(All)");
  EXPECT_EQ(Sent("  hi  "), Texts{"me|M/\xDE  hi  "});
}

TEST_F(ParticipantsTest, CountsInTheLanguagesWords) {
  folder.Put("Lang.con", "x,English\r\n3201,user|users|in this chat\r\n");
  core::LoadLang();
  EXPECT_EQ(chat.CountsText(), " 0 users in this chat");
  chat.AddUser("anna");
  EXPECT_EQ(chat.CountsText(), " 1 user in this chat");
  folder.Put("Lang.con", "x,English\r\n3201,user\r\n");
  core::LoadLang();
  EXPECT_EQ(chat.CountsText(), " 1 user ");
}

TEST_F(ParticipantsTest, UsersOnlineAreAllButGroups) {
  UsersOnline offered;
  EXPECT_TRUE(offered.Take(online));
  EXPECT_EQ(offered.Names(), (Texts{"(All)", "Anna", "bob", "me"}));
  EXPECT_FALSE(offered.Take(online));
  online.Remove(*online.FindText("(Friends)"));
  EXPECT_FALSE(offered.Take(online)) << "the same names";
  online.Remove(*online.FindText("Anna"));
  Online("Anna");
  EXPECT_TRUE(offered.Take(online)) << "in another order";
  EXPECT_EQ(offered.Names(), (Texts{"(All)", "bob", "me", "Anna"}));
}

class RecipientsTest : public testing::Test {
 protected:
  // "text:icon" of each row.
  std::string Rows() const {
    std::string rows;
    for (std::size_t i = 0; i < recipients.Rows().Count(); ++i) {
      const toolkit::ListRow& row = recipients.Rows().At(i);
      EXPECT_EQ(row.icon, row.smallIcon);
      rows += row.text + ":" + std::to_string(row.icon) + " ";
    }
    return rows;
  }

  support::FakeRoster roster;
  Recipients recipients{roster};
};

TEST_F(RecipientsTest, EachNameOnceWhateverItsCaseAndHowOftenItWasChosen) {
  recipients.AddRecipients("bob|Carla|bob|CARLA|");
  recipients.AddRecipient("BOB");
  EXPECT_EQ(Rows(), "bob:2 Carla:2 ");
  EXPECT_TRUE(recipients.IsRecipient("cARLA"));
  EXPECT_FALSE(recipients.IsRecipient("carl"));
}

// A sender may call himself so; an answer to him goes to everybody, and then to nobody twice.
TEST_F(RecipientsTest, EverybodyStandsAloneInAnySpelling) {
  recipients.AddRecipients("bob|anna|");
  recipients.AddRecipients("(All)|");
  EXPECT_EQ(Rows(), "(All):1 ");
  recipients.AddRecipients("dora|(All)|");
  EXPECT_EQ(Rows(), "(All):1 ");
  Recipients shouted{roster};
  shouted.AddRecipients("bob|(ALL)|anna|");
  ASSERT_EQ(shouted.Rows().Count(), 1u);
  EXPECT_TRUE(shouted.IsEverybody());
}

TEST_F(RecipientsTest, RowsShowWhatTheRosterKnows) {
  roster.blocked = {"anna"};
  roster.colours = {{"Anna", 255}};
  recipients.AddRecipients("Anna|bob|");
  EXPECT_EQ(Rows(), "Anna:3 bob:2 ");
  EXPECT_EQ(recipients.Rows().At(0).foreColour, 255);
  EXPECT_EQ(recipients.Rows().At(1).foreColour, 0);
}

TEST_F(RecipientsTest, EmptyFieldsNameNobody) {
  for (const char* list : {"", "|", "|||"}) EXPECT_FALSE(NamesAnybody(list)) << list;
  EXPECT_TRUE(NamesAnybody("|anna"));
  recipients.AddRecipients("||bob||");
  EXPECT_EQ(Rows(), "bob:2 ");
}

}  // namespace
}  // namespace conversation
