// Recipients of alerts, participants of chats, and recipients of chat lines.
#include "ui/conversation/participants.h"

#include "core/globals.h"
#include "core/language.h"
#include "support/recording_network.h"
#include "tests/support/desktop_test.h"
#include "tests/support/rows.h"
#include "ui/main/user_roster.h"

namespace conversation {
namespace {

using Texts = std::vector<std::string>;

class ParticipantsTest : public support::DesktopTest {
 protected:
  ParticipantsTest() {
    core::gCurName = "me";
    folder.Put("Lang.con", "x,English\r\n1201,user|users|online\r\n3201,user|users|in this chat\r\n");
    core::LoadLang();
    roster.ClearlvUsers();
    for (const char* name : {"Anna", "bob", "(Friends)", "me"}) roster.AddUser(name);
  }

  std::string List() const { return support::RowsAndIcons(chat.Rows()); }

  const Texts& Sent(std::string_view line) {
    port.sent.clear();
    chat.Send(line, messenger);
    return port.sent;
  }

  mainwindow::UserRoster roster;
  Participants chat{roster, roster.lvUsers};
  support::RecordingPort port;
  net::Messenger messenger{port};
};

TEST_F(ParticipantsTest, ListsEachOnceIgnoringCase) {
  chat.AddUsers("");
  EXPECT_EQ(chat.CountsText(), " 0 users in this chat");
  chat.AddUser("anna");
  EXPECT_EQ(chat.CountsText(), " 1 user in this chat");
  chat.AddUser("ANNA");
  EXPECT_FALSE(chat.Takes("bob"));
  chat.AddUsers("|bob||Bob|(all)|gone|");
  EXPECT_EQ(List(), "anna=2 bob=2 (all)=1 gone=3 ") << "everybody does not replace the others";
  roster.AddBlocked("anna");
  chat.RemoveUser("BOB");
  roster.RemoveBlock("anna");
  EXPECT_EQ(List(), "anna=3 (all)=1 gone=3 ");
  chat.AddUser("new");
  EXPECT_EQ(List(), "anna=2 (all)=1 gone=3 new=3 ") << "the icons are updated";
  EXPECT_EQ(Log(),
            "anna Added to chat window;bob Added to chat window;(all) Added to chat window;"
            "gone Added to chat window;BOB Removed from chat window;new Added to chat window;");
  chat.RemoveUser("(all)");
  EXPECT_TRUE(chat.Takes("ANNA"));
  EXPECT_FALSE(chat.Takes(""));
  chat.AddUsers("|");
  EXPECT_TRUE(chat.Takes("")) << "a user may have an empty name";
}

TEST_F(ParticipantsTest, LinesGoToEachOrOnceToEverybody) {
  EXPECT_EQ(Sent("hi"), Texts{});
  chat.AddUsers("anna|bob|");
  EXPECT_EQ(Sent("  hi  "), (Texts{"me|P/\xDE  hi|anna", "me|P/\xDE  hi|bob"}));
  chat.AddUser("(All)");
  EXPECT_EQ(Sent("  hi  "), Texts{"me|M/\xDE  hi  "});
  EXPECT_TRUE(chat.Takes("anybody"));
}

TEST_F(ParticipantsTest, UsersOnlineAreAllButGroups) {
  UsersOnline offered;
  EXPECT_TRUE(offered.Take(roster.lvUsers));
  EXPECT_EQ(offered.Names(), (Texts{"(All)", "Anna", "bob", "me"}));
  EXPECT_FALSE(offered.Take(roster.lvUsers));
  roster.RemoveRow("(Friends)");
  EXPECT_FALSE(offered.Take(roster.lvUsers)) << "the same names";
  roster.RemoveRow("Anna");
  roster.AddUser("Anna");
  EXPECT_TRUE(offered.Take(roster.lvUsers)) << "in another order";
  EXPECT_EQ(offered.Names(), (Texts{"(All)", "bob", "me", "Anna"}));
  EXPECT_EQ(GroupsOf(0).size(), 1u);
  EXPECT_EQ(GroupsOf(500).size(), 1u);
  EXPECT_EQ(GroupsOf(501), (std::vector<std::size_t>{0, 83, 167, 250, 334, 417}));
}

class RecipientsTest : public ParticipantsTest {
 protected:
  // The rows after adding these lists of recipients in turn.
  std::string Chosen(std::initializer_list<const char*> lists) {
    for (const char* list : lists) recipients.AddRecipients(list);
    return support::RowsAndIcons(recipients.Rows());
  }
  Recipients recipients{roster};
};

TEST_F(RecipientsTest, ListsEachNameOnceIgnoringCase) {
  roster.SetColour("bob", 255);
  EXPECT_EQ(Chosen({"||bob|Carla|bob|CARLA||", "BOB"}), "bob=2 Carla=2 ");
  EXPECT_EQ(recipients.Rows().At(0).foreColour, 255);
  roster.AddBlocked("BOB");
  recipients.AddRecipient("anna");
  EXPECT_EQ(Chosen({}), "bob=3 Carla=2 anna=2 ");
  EXPECT_TRUE(recipients.IsRecipient("cARLA"));
  EXPECT_FALSE(recipients.IsRecipient("carl"));
}

// A user may have this name; an answer to that user is sent to everybody, and only once.
TEST_F(RecipientsTest, EverybodyReplacesAllOthersIgnoringCase) {
  EXPECT_EQ(Chosen({"bob|anna|", "(All)|"}), "(All)=1 ");
  EXPECT_EQ(Chosen({"dora|(All)|"}), "(All)=1 ");
  Recipients shouted{roster};
  shouted.AddRecipients("bob|(ALL)|anna|");
  ASSERT_EQ(shouted.Rows().Count(), 1u);
  EXPECT_TRUE(shouted.IsEverybody());
}

}  // namespace
}  // namespace conversation
