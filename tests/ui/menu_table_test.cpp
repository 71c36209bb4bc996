#include "ui/toolkit/menu_table.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "core/globals.h"
#include "core/language.h"
#include "tests/support/program_folder.h"
#include "ui/main/main_menu.h"
#include "ui/toolkit/menu_caption.h"

namespace toolkit {
namespace {

// Built-in captions while a language file is unusable.
class MenuTableTest : public testing::Test {
 protected:
  MenuTableTest() { core::gLangError = -1; }
  ~MenuTableTest() override { core::gLangError = 0; }
};

TEST(MenuTable, SoundTablesOnly) {
  constexpr MenuRow good[] = {{0, 1, 0, "a"}, {1, 2, 0, "b"}, {2, 3, 0, "c"}, {0, 4, 0, "d"}};
  constexpr MenuRow twice[] = {{0, 1, 0, "a"}, {0, 1, 0, "b"}};
  constexpr MenuRow gap[] = {{0, 1, 0, "a"}, {2, 2, 0, "b"}};
  constexpr MenuRow noId[] = {{0, 0, 0, "a"}};
  static_assert(IsSound(good) && !IsSound(twice) && !IsSound(gap) && !IsSound(noId));
  static_assert(OpensSubMenu(good, 0) && OpensSubMenu(good, 1) && !OpensSubMenu(good, 2) && !OpensSubMenu(good, 3));
}

TEST_F(MenuTableTest, SafeModeShowsBareNames) {
  EXPECT_EQ(PlainCaption("*|Receive nothing|Do Not Disturb"), "Do Not Disturb");
  EXPECT_EQ(PlainCaption("||Show &Main Window"), "Show &Main Window");
  EXPECT_EQ(PlainCaption("-Configuration"), "");
}

// The order of the codes is the order of the menu, and every picture reaches the captions that it was drawn for.
TEST_F(MenuTableTest, MainMenuIsComplete) {
  int lastCode = 1100;
  ImageTags tags;
  TagPictures(mainwindow::kMainMenu, tags);
  for (const MenuRow& row : mainwindow::kMainMenu) {
    SCOPED_TRACE(row.caption);
    if (row.textCode >= 1101 && row.textCode <= 1125) {
      EXPECT_EQ(row.textCode, ++lastCode);
    }
    const CMyItemData data = ParseCaption(AuthoredCaption(row));
    EXPECT_EQ(tags.Find(data.sMenuText, 24), row.picture);
  }
  EXPECT_EQ(lastCode, 1125);
  EXPECT_EQ(std::size(mainwindow::kMainMenu), 25u + mainwindow::kStates + mainwindow::kLinks);
}

// Pictures follow the captions, so in every language each must reach its own items and no others.
TEST(MenuTable, PicturesFollowEveryLanguage) {
  support::ProgramFolder folder;
  std::ifstream file(QUILLON_LANGUAGE_FILE, std::ios::binary);
  folder.Put("Lang.con", std::string(std::istreambuf_iterator<char>(file), {}));
  for (const char* language : {"English",
                               "Fran\xE7"
                               "ais",
                               "Deutsch", "Espa\xF1ol"}) {
    core::gLanguage = language;
    core::LoadLang();
    ASSERT_EQ(core::gLanguage, language);
    ImageTags tags;
    TagPictures(mainwindow::kMainMenu, tags);
    for (const MenuRow& row : mainwindow::kMainMenu) {
      const CMyItemData data = ParseCaption(AuthoredCaption(row));
      if (!IsSeparator(data)) {
        EXPECT_EQ(tags.Find(data.sMenuText, 24), row.picture) << data.sMenuText;
      }
      EXPECT_EQ(data.bAsMark, ParseCaption(row.caption).bAsMark) << row.caption;
      EXPECT_FALSE(data.sMenuText.empty()) << row.caption;
    }
  }
}

TEST(ImageTags, CaptionsThatBeginWithATagIgnoringCase) {
  ImageTags tags;
  tags.Add(5, "&Close");
  tags.Add(2, "inet");
  tags.Add(2, "web");
  tags.Add(7, "");
  EXPECT_EQ(tags.Find("&CLOSE all", 24), 5);
  EXPECT_EQ(tags.Find("Website", 24), 2);
  EXPECT_EQ(tags.Find("&Clos", 24), -1);
  EXPECT_EQ(tags.Find("", 24), -1);
  EXPECT_EQ(tags.Find("&Close", 5), -1) << "the list has no such image";
  tags.Add(1, "&C");
  EXPECT_EQ(tags.Find("&Close", 24), 1) << "the first image wins, not the longest tag";
}

}  // namespace
}  // namespace toolkit
