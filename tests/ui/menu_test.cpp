// Menus before they are drawn: captions, mnemonics and pictures.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/globals.h"
#include "core/language.h"
#include "support/program_folder.h"
#include "ui/toolkit/menu/menu_items.h"

namespace toolkit {
namespace {

struct Case {
  const char *authored, *help, *caption;
  char mark;  // '#', '*', '-' or none
};

constexpr Case kCases[] = {
    {"&Reply", "", "&Reply", 0},
    {"|Close this window|&Close", "Close this window", "&Close", 0},
    {"#|Add the time to each msg|&Add Time", "Add the time to each msg", "&Add Time", '#'},
    {"*|Receive nothing|Do Not Disturb", "Receive nothing", "Do Not Disturb", '*'},
    {"-Export", "", "Export", '-'},
    {"-|Where texts go|Export", "Where texts go", "Export", '-'},
    {"-", "", "", '-'},
    {"", "", "", 0},
    {"|only one bar", "", "|only one bar", 0},
    {"|help|a|b", "help", "a|b", 0},
    {"#-Export", "", "-Export", '#'},  // only the first character counts
    {"#|-help|*caption", "-help", "*caption", '#'},
};

TEST(MenuCaption, IsParsedAndRestored) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.authored);
    CMyItemDatas items;
    const CMyItemData& data = *items.Item(items.Add(ParseCaption(c.authored)));
    EXPECT_EQ(data.sMenuHelp, c.help);
    EXPECT_EQ(data.sMenuText, c.caption);
    EXPECT_EQ(data.bAsMark, c.mark == '#' || c.mark == '*');
    EXPECT_EQ(data.bAsCheck, c.mark == '#');
    EXPECT_EQ(IsSeparator(data), c.mark == '-');
    EXPECT_EQ(RestoreCaption(data), c.authored);
  }
}

TEST(MenuCaption, SafeModeShowsBareNames) {
  EXPECT_EQ(RestoreCaption(ParseCaption("||Show &Main Window")), "Show &Main Window");
  EXPECT_EQ(PlainCaption("||Show &Main Window"), "Show &Main Window");
  EXPECT_EQ(PlainCaption("*|Receive nothing|Do Not Disturb"), "Do Not Disturb");
  EXPECT_EQ(PlainCaption("-Configuration"), "");
}

TEST(MenuMnemonic, LetterOfACaption) {
  EXPECT_EQ(MnemonicLetter("R&&D &Lab"), 'l');
  for (const char* none : {"Status Bar", "ends in &"}) EXPECT_EQ(MnemonicLetter(none), '\0');
  EXPECT_EQ(MnemonicLetter("\xC0 &\xC9"), '\xE9') << "accented letters fold by the code page";
}

TEST(MenuMnemonic, OneMatchExecutesSeveralRotate) {
  std::vector<MnemonicItem> items{{"Exit", false}, {"E&xit"}, {"Te&xt"}, {"&Off", true, false}, {"Xylophone"}};
  EXPECT_EQ(ChooseByMnemonic(items, 'X'), (MnemonicChoice{1, false}));
  items[1].highlighted = true;
  EXPECT_EQ(ChooseByMnemonic(items, 'x'), (MnemonicChoice{2, false}));
  items[1].highlighted = false;
  items[2].highlighted = true;
  EXPECT_EQ(ChooseByMnemonic(items, 'x'), (MnemonicChoice{1, false}));
  items[1].selectable = false;
  EXPECT_EQ(ChooseByMnemonic(items, 'x'), (MnemonicChoice{2, true}));
  EXPECT_EQ(ChooseByMnemonic(items, 'o'), (MnemonicChoice{3, false})) << "a disabled item is only shown";
}

TEST(MenuMnemonic, FirstLettersMatchWithoutMnemonics) {
  const std::vector<MnemonicItem> items{{"Export", false}, {"Status Bar"}, {"Mo&ve to"}, {"", true}};
  for (const char* first : {"Bar", "&Bar"})
    EXPECT_EQ(ChooseByMnemonic(std::vector<MnemonicItem>{{first}, {"Add"}}, 'b'), (MnemonicChoice{0, true})) << first;
  EXPECT_EQ(ChooseByMnemonic(items, 's'), (MnemonicChoice{1, true}));
  for (const char letter : {'t', 'e', 'm', '\0'}) EXPECT_EQ(ChooseByMnemonic(items, letter).position, -1) << letter;
}

// A missing text makes its own row empty, which keeps its kind, and does not affect other rows.
TEST(MenuTable, AMissingTextIsEmptyAndLeavesTheOthers) {
  support::ProgramFolder folder;
  folder.Put("Lang.con",
             "Code,English,Deutsch\r\n1,-Head,-Kopf\r\n3,|h|Mark,|h|Marke\r\n6,Close,Zu\r\n8,Name,Name\r\n"
             "9,Help,Hilfe\r\n");
  core::gLanguage = "Deutsch";
  core::LoadLang();
  constexpr MenuRow table[] = {{0, 1, {1, "-Head"}, 3}, {0, 2, {2, "-Head"}},    {0, 3, {4, "#|h|Mark"}},
                               {0, 4, {5, "|h|Plain"}}, {0, 5, {6, "Close"}, 7}, {0, 6, {8, "*|Help|Name"}, 1, 9}};
  const std::vector<std::string> captions = AuthoredCaptions(table, true);
  EXPECT_EQ(captions, (std::vector<std::string>{"-Kopf", "-", "#", "", "Zu", "*|Hilfe|Name"}));
  ImageTags tags;
  TagPictures(table, captions, tags);
  EXPECT_EQ(tags.Find("Kopf", 24), 3);
  EXPECT_EQ(tags.Find("Zu", 24), 7);
  Caption name{7, "Only spoken"};
  name.spoken = true;
  EXPECT_EQ(name.Text(true), "Only spoken") << "files of earlier versions lack these";
}

TEST(ImageTags, CaptionsThatBeginWithATagIgnoringCase) {
  ImageTags tags;
  tags.Add(5, "&Close");
  tags.Add(7, "");
  EXPECT_EQ(tags.Find("&CLOSE all", 24), 5);
  for (const char* caption : {"&Clos", ""}) EXPECT_EQ(tags.Find(caption, 24), -1) << caption;
  EXPECT_EQ(tags.Find("&Close", 5), -1) << "the list has no such image";
  tags.Add(0, "&C");
  EXPECT_EQ(tags.Find("&Close", 24), 0) << "the first image wins, not the longest tag";
}

}  // namespace
}  // namespace toolkit
