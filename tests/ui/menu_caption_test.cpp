#include "ui/toolkit/menu_caption.h"

#include <gtest/gtest.h>

#include "ui/toolkit/menu_items.h"

namespace toolkit {
namespace {

CMyItemData Captioned(const char* caption) {
  CMyItemData data;
  data.sMenuText = caption;
  return data;
}

struct Case {
  const char *authored, *help, *caption;
  char mark;  // '#', '*', '-' or none
};

constexpr Case kCases[] = {
    {"&Reply", "", "&Reply", 0},
    {"|Close this window|&Close", "Close this window", "&Close", 0},
    {"#|Add the time to each msg|&Add Time", "Add the time to each msg", "&Add Time", '#'},
    {"*|Receive nothing|Do Not Disturb", "Receive nothing", "Do Not Disturb", '*'},
    {"#Plain check", "", "Plain check", '#'},
    {"*Plain option", "", "Plain option", '*'},
    {"-Export", "", "Export", '-'},
    {"-|Where texts go|Export", "Where texts go", "Export", '-'},
    {"-", "", "", '-'},
    {"", "", "", 0},
    {"|only one bar", "", "|only one bar", 0},
    {"a|b|c", "", "a|b|c", 0},
    {"|help|a|b", "help", "a|b", 0},
    {"#-Export", "", "-Export", '#'},  // only the first character counts
    {"#|-help|*caption", "-help", "*caption", '#'},
};

TEST(MenuCaption, SaysWhatItMeansAndComesBackTheSame) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.authored);
    const CMyItemData data = ParseCaption(c.authored);
    EXPECT_EQ(data.sMenuHelp, c.help);
    EXPECT_EQ(data.sMenuText, c.caption);
    EXPECT_EQ(data.bAsMark, c.mark == '#' || c.mark == '*');
    EXPECT_EQ(data.bAsCheck, c.mark == '#');
    EXPECT_EQ(IsSeparator(data), c.mark == '-');
    EXPECT_EQ(RestoreCaption(data), c.authored);
  }
}

TEST(MenuCaption, EmptyHelpIsNoHelp) {
  const CMyItemData data = ParseCaption("||Show &Main Window");
  EXPECT_EQ(data.sMenuHelp, "");
  EXPECT_EQ(RestoreCaption(data), "Show &Main Window");
}

TEST(MenuCaption, NamesOfUsersAreShownAsTheyStand) {
  for (const char* name : {"anna", "-anna", "#1", "*", "|a|b", "||", ""})
    EXPECT_EQ(ParseCaption(LiteralCaption(name)), Captioned(name)) << name;
  EXPECT_EQ(LiteralCaption("R&D"), "R&&D");
}

TEST(MenuItems, StrangeKeysFindNothing) {
  CMyItemDatas mine, theirs;
  const auto first = mine.Add(Captioned("a")), second = mine.Add(Captioned("b"));
  const auto foreign = theirs.Add(Captioned("c"));
  EXPECT_EQ(mine.Item(second)->sMenuText, "b");
  EXPECT_EQ(mine.Item(foreign), nullptr);
  EXPECT_EQ(mine.Item(0), nullptr);
  mine.Remove(first);
  EXPECT_EQ(mine.Item(first), nullptr);
  EXPECT_EQ(mine.Count(), 1u);
  EXPECT_NE(mine.Add({}), first) << "a stale key must never come to mean another item";
}

}  // namespace
}  // namespace toolkit
