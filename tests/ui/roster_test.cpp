// The roster and its rows.
#include "ui/main/user_roster.h"

#include <string>
#include <vector>

#include "core/globals.h"
#include "core/language.h"
#include "tests/support/desktop_test.h"
#include "tests/support/rows.h"

namespace mainwindow {
namespace {

using toolkit::ListRow;
using toolkit::ListRows;

TEST(ListRows, KeysAreUniqueAndExact) {
  ListRows rows;
  rows.Add({.text = "x", .key = "g"});
  const ListRow& second = rows.Add({.text = "y", .key = "G"});
  const ListRow& accented = rows.Add({.text = "\xC9mile"});
  rows.Add({.text = "no key"});
  const std::uint64_t changes = rows.MembershipRevision();
  EXPECT_EQ(support::ErrorOf([&] { rows.Add({.text = "z", .key = "G"}); }), 35602);
  EXPECT_EQ(support::RowsAndIcons(rows), "x=0 y=0 \xC9mile=0 no key=0 ");
  EXPECT_EQ(rows.MembershipRevision(), changes);
  EXPECT_EQ(rows.FindKey("G"), &second);
  EXPECT_EQ(rows.FindText("Y"), nullptr);
  EXPECT_EQ(rows.FindTextIgnoringCase("\xE9MILE"), &accented) << "folded by the code page";
  const std::vector<toolkit::RowId> ids = rows.Ids();
  rows.Remove(*rows.FindId(ids[1]));
  for (const std::size_t row : {1u, 2u}) EXPECT_EQ(rows.IndexOf(ids[row]), 1u) << "the next row's place";
  EXPECT_EQ(std::tuple(rows.FindId(ids[1]), rows.FindId(ids[2]), rows.FindId(99)),
            std::tuple(nullptr, &accented, nullptr));
  EXPECT_EQ(rows.Ids(), (std::vector{ids[0], ids[2], ids[3]}));
}

TEST(ListRows, CountersChangeOnRealChangesOnly) {
  ListRows rows;
  const ListRow& row = rows.Add({.text = "anna", .icon = 2, .smallIcon = 2, .foreColour = 5});
  const auto changes = [&] { return std::pair(rows.MembershipRevision(), rows.AppearanceRevision()); };
  const auto before = changes();
  rows.SetSubText(row, "");
  rows.SetIcon(row, 2);
  rows.SetForeColour(row, 5);
  rows.SetSelected(row, true);
  rows.SetSelected(row, true);
  EXPECT_EQ(changes(), before);
  EXPECT_EQ(rows.SelectedCount(), 1u);
  rows.SetSubText(row, "away");
  rows.SetIcon(row, 3);
  rows.SetForeColour(row, 6);
  EXPECT_EQ(changes(), std::pair(before.first, before.second + 3));
  EXPECT_EQ(row.smallIcon, 3);
  rows.Remove(row);
  EXPECT_EQ(rows.SelectedCount(), 0u);
  EXPECT_EQ(rows.TextBytes(), 0u);
  const ListRow& enlarged = rows.Add({.text = "bob", .icon = 2, .smallIcon = 1});
  rows.SetIcon(enlarged, 2);
  EXPECT_EQ(enlarged.smallIcon, 2);
  const std::uint64_t members = rows.MembershipRevision();
  rows.Clear();
  EXPECT_GT(rows.MembershipRevision(), members) << "windows show the rows anew";
}

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

TEST_F(UserRosterTest, CountsExcludeGroupsAndShowBlockedNames) {
  Add({"anna"});
  EXPECT_EQ(roster.lblStat.Caption(), " 1 user online (-0)");
  Add({"bob", "carl", "dora", "emma"});
  for (const char* name : {"bob", "zoe"}) roster.AddBlocked(name);
  EXPECT_EQ(roster.lblStat.Tag(), " 5 users online (-2)");
  roster.SetGroupLines({"A|anna", "B|bob"});  // without their rows
  roster.ClearlvUsers();
  EXPECT_EQ(roster.lblStat.Caption(), " -2 users online (-2)");
  roster.RefGroups();
  roster.UpdateStat();
  const std::string counts = " 0 users online (-2)";
  for (const std::string help : {"help", ""}) {  // shown in place of the counts
    roster.lblStat.ShowHelp(help);
    EXPECT_EQ(roster.lblStat.Caption(), help.empty() ? counts : help);
  }
  roster.lblStat.ShowHelp("help");
  captions = 0;
  core::gLanguage = "Deutsch";
  core::LoadLang();
  for (int i = 0; i < 2; ++i) roster.UpdateStat();
  EXPECT_EQ(roster.lblStat.Caption(), " 0 Nutzer da (-2)");
  EXPECT_EQ(captions, 1);
}

TEST_F(UserRosterTest, UsersAreMarkedAndFoundIgnoringCase) {
  Add({"Anna", "(anna)", "bob"});
  for (const char* name : {"anna", "ANNA", "(anna)", "carl"}) roster.AddBlocked(name);
  Add({"Carl"});
  EXPECT_EQ(roster.BlockedNames(), (std::vector<std::string>{"anna", "(anna)", "carl"}));
  for (const char* name : {"Anna", "anna"}) roster.SetColour(name, 7 + (*name == 'a'));  // one row is of that case
  for (const char* name : {"aNNA", "zoe"}) EXPECT_EQ(roster.GetColorForUName(name), *name == 'a' ? 7 : 0);
  for (const char* name : {"ANNA", "(all)"}) EXPECT_EQ(roster.CountRows(name), 1);
  EXPECT_EQ(Rows(), "(All)=1 Anna=3 (anna)=2 bob=2 Carl=3 ");
  roster.RemoveBlock(roster.BlockedNames()[0]);
  EXPECT_EQ(Rows(), "(All)=1 Anna=2 (anna)=2 bob=2 Carl=3 ");
  roster.ClearBlockedNames();
  roster.RefBlock();
  EXPECT_EQ(Rows(), "(All)=1 Anna=2 (anna)=2 bob=2 Carl=2 ");
}

TEST_F(UserRosterTest, WindowsAreNotifiedOfChangesOnly) {
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
  EXPECT_EQ(roster.CountUsers(), 1u);
  roster.SetGroupLines({});
  roster.RefGroups();
  EXPECT_EQ(Rows(), "(All)=1 anna=2 ");
  roster.SetGroupLines({"Friends|anna|"});
  roster.RefGroups();
  roster.ClearlvUsers();
  Add({"bob"});
  EXPECT_EQ(roster.CountUsers(), 1u);
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
  EXPECT_EQ(roster.SelectedRecipients(), "anna|Friends|Bob|anna|") << "a user may have a group's name";
  Select({"(All)", "Bob"});
  EXPECT_EQ(roster.SelectedRecipients(), "(All)|Bob|");
  roster.AddBlocked("bob");
  Select({"(All)", "Bob", "anna"});
  roster.ToggleBlock();
  EXPECT_EQ(roster.BlockedNames(), std::vector<std::string>{"anna"});
  EXPECT_EQ(roster.lblStat.Caption(), " 3 users online (-1)");
}

TEST_F(UserRosterTest, ListsAFloodOfNamesUpToALimit) {
  std::size_t listed = 0;
  for (std::size_t i = 0; i < UserRoster::kMaxRows + 5; ++i) listed += roster.AddUser(std::to_string(i));
  EXPECT_EQ(listed, UserRoster::kMaxRows - 1);

  roster.ClearlvUsers();
  const std::string longName(58000, 'x');
  for (int i = 0; i < 400; ++i) roster.AddUser(longName + std::to_string(i));
  EXPECT_LE(roster.lvUsers.TextBytes(), UserRoster::kMaxTextBytes);
  EXPECT_GT(roster.lvUsers.TextBytes() + 2 * longName.size() + 6, UserRoster::kMaxTextBytes);
  EXPECT_FALSE(roster.AddUser(longName));
  EXPECT_TRUE(roster.AddUser("bob"));
}

}  // namespace
}  // namespace mainwindow
