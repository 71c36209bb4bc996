#include "ui/main/user_roster.h"

#include <string>
#include <vector>

#include "core/globals.h"
#include "core/language.h"
#include "tests/support/desktop_test.h"
#include "tests/support/rows.h"

namespace mainwindow {
namespace {

class UserRosterTest : public support::DesktopTest {
 protected:
  UserRosterTest() {
    folder.Put("Lang.con", "Code,English,Deutsch\r\n1201,user|users|online,Nutzer|Nutzer|da");
    core::LoadLang();
    roster.ClearlvUsers();
    roster.lblStat.captionChanged = [this](const std::string&) { ++captions; };
    roster.refreshChatWindows = [this] { ++refreshes; };
  }

  void Add(std::initializer_list<const char*> names) {
    for (const char* name : names) roster.AddUser(name);
    roster.RefBlock();
  }

  void Select(std::initializer_list<const char*> texts) {
    for (std::size_t i = 0; i < roster.lvUsers.Count(); ++i) roster.lvUsers.SetSelected(roster.lvUsers.At(i), false);
    for (const char* text : texts) roster.lvUsers.SetSelected(*roster.lvUsers.FindText(text), true);
  }

  std::string Rows() const { return support::RowsAndIcons(roster.lvUsers); }

  UserRoster roster;
  int captions = 0, refreshes = 0;
};

TEST_F(UserRosterTest, CountsTakeOffGroupsAndTellTheBlocked) {
  Add({"anna"});
  EXPECT_EQ(roster.lblStat.Caption(), " 1 user online (-0)");
  Add({"bob", "carl", "dora", "emma"});
  roster.AddBlocked("bob");
  roster.AddBlocked("zoe");
  EXPECT_EQ(roster.lblStat.Tag(), " 5 users online (-2)");
  roster.SetGroupLines({"A|anna", "B|bob"});  // without their rows
  roster.UpdateStat();
  EXPECT_EQ(roster.lblStat.Caption(), " 3 users online (-2)");
  roster.ClearlvUsers();
  EXPECT_EQ(roster.lblStat.Caption(), " -2 users online (-2)");
  roster.RefGroups();
  EXPECT_EQ(roster.lblStat.Caption(), " -2 users online (-2)");  // nothing counts anew until the next event
  roster.UpdateStat();
  EXPECT_EQ(roster.lblStat.Caption(), " 0 users online (-2)");
}

TEST_F(UserRosterTest, CountsFollowTheLanguageAndReplaceAHelpText) {
  roster.lblStat.ShowHelp("help");
  EXPECT_EQ(roster.lblStat.Caption(), "help");
  roster.lblStat.ShowHelp("");
  EXPECT_EQ(roster.lblStat.Caption(), " 0 users online (-0)");
  roster.lblStat.ShowHelp("help");
  captions = 0;
  core::gLanguage = "Deutsch";
  core::LoadLang();
  for (int i = 0; i < 2; ++i) roster.UpdateStat();
  EXPECT_EQ(roster.lblStat.Caption(), " 0 Nutzer da (-0)");
  EXPECT_EQ(captions, 1);
}

TEST_F(UserRosterTest, BlockingMarksUsersWhateverTheCase) {
  Add({"Anna", "(anna)", "bob"});
  roster.AddBlocked("anna");
  roster.AddBlocked("ANNA");
  roster.AddBlocked("(anna)");
  roster.AddBlocked("carl");
  Add({"Carl"});
  EXPECT_EQ(roster.BlockedNames(), (std::vector<std::string>{"anna", "(anna)", "carl"}));
  EXPECT_EQ(Rows(), "(All)=1 Anna=3 (anna)=2 bob=2 Carl=3 ");
  roster.RemoveBlock(roster.BlockedNames()[0]);
  EXPECT_FALSE(roster.IsBlocked("anna"));
  EXPECT_EQ(Rows(), "(All)=1 Anna=2 (anna)=2 bob=2 Carl=3 ");
  roster.ClearBlockedNames();
  EXPECT_EQ(Rows(), "(All)=1 Anna=2 (anna)=2 bob=2 Carl=3 ");
  roster.RefBlock();
  EXPECT_EQ(Rows(), "(All)=1 Anna=2 (anna)=2 bob=2 Carl=2 ");
}

TEST_F(UserRosterTest, WindowsAreToldOfChangesOnly) {
  Add({"anna"});
  refreshes = captions = 0;
  roster.SetStateText("anna", "away");
  roster.SetColour("anna", 5);
  for (int i = 0; i < 3; ++i) roster.RefBlock();
  EXPECT_EQ(refreshes + captions, 0);
  roster.AddBlocked("anna");
  for (int i = 0; i < 3; ++i) roster.RefBlock();
  EXPECT_EQ(refreshes, 1);
  Add({"bob"});
  EXPECT_EQ(refreshes, 2);
  roster.RemoveRow("bob");
  roster.RefBlock();
  EXPECT_EQ(refreshes, 3);
}

TEST_F(UserRosterTest, GroupRowsAreRebuiltAtTheEnd) {
  roster.SetGroupLines({"Friends|anna|", "Work"});
  roster.RefGroups();
  Add({"anna"});
  roster.RefGroups();
  roster.AddBlocked("(Friends)");
  EXPECT_EQ(Rows(), "(All)=1 anna=2 (Friends)=4 (Work)=4 ");
  roster.SetGroupLines({});
  roster.RefGroups();
  EXPECT_EQ(Rows(), "(All)=1 anna=2 ");
}

TEST_F(UserRosterTest, PresentMembersOfAGroup) {
  Add({"Bob", "anna"});
  roster.SetGroupLines({"Friends|ANNA|carl|bob", "Closed|bob|", "Friends|bob", "|bob", "Last|anna|"});
  const auto expect = [this](std::initializer_list<const char*> names, const char* members) {
    for (const char* name : names) EXPECT_EQ(roster.GetActiveGroupList(name), members) << name;
  };
  expect({"Friends", "(Friends)"}, "anna|Bob|");
  expect({"Closed", "()", "("}, "Bob|");
  expect({"friends", "Last", "(Last)", "nobody"}, "");
}

TEST_F(UserRosterTest, TheSelectionBecomesRecipientsOrIsBlocked) {
  Add({"Bob", "anna", "Friends"});
  roster.SetGroupLines({"Friends|bob|anna|", "Last|anna|"});
  roster.RefGroups();
  EXPECT_EQ(roster.SelectedRecipients(), "");
  Select({"(Friends)", "anna", "(Last)", "Friends"});
  EXPECT_EQ(roster.SelectedRecipients(), "anna|Friends|Bob|anna|") << "a user may bear a group's name";
  Select({"(All)", "Bob"});
  EXPECT_EQ(roster.SelectedRecipients(), "(All)|Bob|");
  roster.AddBlocked("bob");
  Select({"(All)", "Bob", "anna"});
  roster.ToggleBlock();
  EXPECT_EQ(roster.BlockedNames(), std::vector<std::string>{"anna"});
  EXPECT_EQ(roster.lblStat.Caption(), " 3 users online (-1)");
}

TEST_F(UserRosterTest, LooksUpColoursAndNamesIgnoringCase) {
  Add({"Anna"});
  roster.SetColour("Anna", 7);
  roster.SetColour("anna", 8);  // no such row
  EXPECT_EQ(roster.GetColorForUName("aNNA"), 7);
  EXPECT_EQ(roster.GetColorForUName("bob"), 0);
  EXPECT_EQ(roster.CountRows("ANNA"), 1);
  EXPECT_EQ(roster.CountRows("(all)"), 1);
}

TEST_F(UserRosterTest, AFloodOfNamesIsListedUpToABound) {
  std::size_t listed = 0;
  for (std::size_t i = 0; i < UserRoster::kMostRows + 5; ++i) listed += roster.AddUser(std::to_string(i));
  EXPECT_EQ(listed, UserRoster::kMostRows - 1);

  roster.ClearlvUsers();
  const std::string longName(60000, 'x');
  for (int i = 0; i < 400; ++i) roster.AddUser(longName + std::to_string(i));
  EXPECT_LE(roster.lvUsers.TextBytes(), UserRoster::kMostTextBytes);
  EXPECT_GT(roster.lvUsers.Count(), 200u);
  EXPECT_FALSE(roster.AddUser(longName));
  EXPECT_TRUE(roster.AddUser("bob"));
}

}  // namespace
}  // namespace mainwindow
