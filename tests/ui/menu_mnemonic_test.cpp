#include "ui/toolkit/menu_mnemonic.h"

#include <gtest/gtest.h>

#include <vector>

namespace toolkit {
namespace {

TEST(MenuMnemonic, LetterOfACaption) {
  EXPECT_EQ(MnemonicLetter("Top &Left"), 'l');
  EXPECT_EQ(MnemonicLetter("R&&D &Lab"), 'l');
  EXPECT_EQ(MnemonicLetter("Status Bar"), '\0');
  EXPECT_EQ(MnemonicLetter("ends in &"), '\0');
  EXPECT_EQ(MnemonicLetter("\xC0 &\xC9"), '\xE9') << "accented letters fold by the code page";
}

TEST(MenuMnemonic, OneMatchExecutesSeveralTakeTurns) {
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

TEST(MenuMnemonic, FirstLettersServeWhereNoMnemonicDoes) {
  const std::vector<MnemonicItem> items{{"Export", false}, {"Status Bar"}, {"&Move to"}, {"", true}};
  EXPECT_EQ(ChooseByMnemonic(items, 's'), (MnemonicChoice{1, true}));
  EXPECT_EQ(ChooseByMnemonic(items, 't').position, -1);
  EXPECT_EQ(ChooseByMnemonic(items, 'e').position, -1) << "heads are not chosen";
  EXPECT_EQ(ChooseByMnemonic(items, '\0').position, -1);
  EXPECT_EQ(ChooseByMnemonic({}, 's').position, -1);
}

}  // namespace
}  // namespace toolkit
