// The options dialog as a real window.
#include "ui/options/frm_opt.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "core/event_loop.h"
#include "core/files.h"
#include "core/globals.h"
#include "core/language.h"
#include "support/recording_program.h"
#include "tests/windows/box_answers.h"
#include "support/window_probe.h"

void support::Record(std::string) {}

namespace options {
namespace {

using support::BoxAnswers;
using support::SelectRow;
using Texts = std::vector<std::string>;

class OptionsDialog : public testing::Test {
 protected:
  OptionsDialog() {
    support::SetLanguage("English");
    core::gCurName = core::gUserName = "Anna";
    core::gColour = 128;
    core::gPopPos = 2;
    core::gSound = "(S)";
    core::gRunAtLogon = 1;
    core::gAlertHeight = 3;
    for (const char* name : {"Mallory", "John smith"}) users.AddBlocked(name);
    users.SetGroupLines({"Friends|bob|carl|", "Rest|dora|"});
  }
  ~OptionsDialog() override {
    if (form->hwnd()) ::DestroyWindow(form->hwnd());
    ::DeleteFileA(core::InProgramDirectory("User.ini").c_str());
  }

  void Open() {
    form->Load();
    form->Show();
    Pump();
  }
  static void Pump() {
    for (int i = 0; i < 3; ++i) core::RunPendingEvents();
  }

  HWND Page(int index) const { return support::ChildrenOf(form->hwnd(), "picOpt").at(static_cast<std::size_t>(index)); }
  HWND Item(int page, int id) const { return ::GetDlgItem(Page(page), id); }
  HWND Child(int page, const char* className) const { return support::ChildrenOf(Page(page), className).at(0); }
  HWND Swatches() const { return Child(0, WC_LISTVIEWA); }
  HWND Sounds() const { return Child(1, WC_LISTVIEWA); }
  HWND Blocked() const { return Child(2, WC_LISTVIEWA); }
  HWND Positions() const { return Child(1, TOOLBARCLASSNAMEA); }
  // A button of the dialog or of the page that is shown.
  void Press(int command) const {
    const HWND window = command <= kCloseButton ? form->hwnd() : Page(VisiblePage());
    ::SendMessageA(window, WM_COMMAND, static_cast<WPARAM>(command), 0);
  }
  static void Type(HWND box, const std::string& text) { ::SetWindowTextA(box, text.c_str()); }
  static bool Key(HWND target, WPARAM key, int held = 0) { return support::FilterKey(target, WM_KEYDOWN, key, held); }
  bool Alt(char letter) const {
    return support::FilterKey(form->hwnd(), WM_SYSCHAR, static_cast<WPARAM>(letter), VK_MENU);
  }
  int VisiblePage() const {
    int visible = -1;
    for (int i = 0; i < 4; ++i)
      if (::IsWindowVisible(Page(i))) visible = visible < 0 ? i : 99;
    return visible;
  }
  static int SelectedRow(HWND list) { return ListView_GetNextItem(list, -1, LVNI_SELECTED); }
  // The nodes below one as text: a blank before each group, ">" before each member.
  static std::string Nodes(HWND tree, HTREEITEM parent, const char* before) {
    std::string all;
    for (HTREEITEM node = TreeView_GetChild(tree, parent); node; node = TreeView_GetNextSibling(tree, node)) {
      char text[260] = "";
      TVITEMA item{TVIF_TEXT, node, 0, 0, text, sizeof text, 0, 0, 0, 0};
      ::SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
      all += before + std::string(text) + Nodes(tree, node, ">");
    }
    return all;
  }
  std::string Tree() const { return Nodes(Child(3, WC_TREEVIEWA), TreeView_GetRoot(Child(3, WC_TREEVIEWA)), " "); }

  support::RecordingProgram program;
  mainwindow::UserRoster& users = program.users;
  std::shared_ptr<FrmOpt> form = std::make_shared<FrmOpt>(program, [] {});
};

// A control that did not show the setting's value would change it on Accept.
TEST_F(OptionsDialog, AcceptWithoutAChangeChangesNothing) {
  const auto settings = [this] {
    return std::tuple(core::gColour, core::gSound, core::gPopPos, core::gRunAtLogon, core::gLanguage, core::gUserName,
                      users.BlockedNames(), users.GroupLines());
  };
  for (const bool fits : {true, false}) {
    if (!fits) {
      const std::string longName(10'000, 'x');
      form = std::make_shared<FrmOpt>(program, [] {});
      core::gColour = 12345;
      core::gSound = "gone.wav";
      core::gPopPos = 0;
      core::gLanguage = "Klingon";
      users.AddBlocked(longName);
      users.SetGroupLines({longName + "|" + longName + "|"});
    }
    const auto before = settings();
    Open();
    EXPECT_EQ(support::RowTexts(Sounds()),
              (Texts{"(Silent)", "(Beep)", "chime.wav", "drop.wav", "knock.wav", "marimba.wav"}));
    Press(kAcceptButton);
    EXPECT_FALSE(form->hwnd());
    EXPECT_EQ(settings(), before);
  }
}

TEST_F(OptionsDialog, TheNameMustNotBeLeftEmpty) {
  Open();
  const HWND name = Item(0, kNameBox);
  const BoxAnswers answering;
  const auto leave = [&](const char* text) {
    ::SetFocus(name);
    Type(name, text);
    ::SetFocus(Swatches());
    Pump();
  };
  leave("   ");
  EXPECT_EQ(BoxAnswers::Texts(), (Texts{"The screen name cannot be empty."}));
  EXPECT_EQ(::GetFocus(), name);
  leave("  Berta ");
  EXPECT_EQ(support::TextOf(name), "Berta");
  ::SetFocus(name);
  Type(name, "");
  Press(kSecurityButton);
  Pump();
  EXPECT_EQ(BoxAnswers::Texts().size(), 2u);
  EXPECT_EQ(VisiblePage(), 0) << "the page does not change either";
}

TEST_F(OptionsDialog, AcceptRefusesNamesAndTakesGoodOnes) {
  for (const char* name : {"Anna", "Bob"}) users.AddUser(name);
  program.onOpenSocket = [] {
    EXPECT_EQ(std::tuple(core::gUserName, core::gColour), std::tuple("Carla", 16711680)) << "what the network learns";
  };
  Open();
  const BoxAnswers answering;
  ::SendMessageA(Item(1, kLanguageBox), CB_SETCURSEL, 1, 0);
  Type(Item(0, kNameBox), "bob");
  Press(kAcceptButton);
  ASSERT_TRUE(form->hwnd());
  EXPECT_EQ(BoxAnswers::Texts(), Texts{core::GetText(2204)}) << "and no question about the language yet";

  ::SendMessageA(Item(1, kLanguageBox), CB_SETCURSEL, 0, 0);
  Type(Item(0, kNameBox), " Carla ");
  SelectRow(Swatches(), 9);
  ::SendMessageA(Positions(), TB_CHECKBUTTON, kFirstPosition + 2, TRUE);
  SelectRow(Sounds(), 3);
  ::SendMessageA(Item(1, kStartUpBox), BM_SETCHECK, BST_UNCHECKED, 0);
  const std::string settings = core::InProgramDirectory("User.ini");
  ::CreateDirectoryA(settings.c_str(), nullptr);  // which no file can be written over
  Press(kAcceptButton);
  EXPECT_EQ(BoxAnswers::Texts().back(), "Run-time error '75':\r\n\r\nPath/File access error");
  ::RemoveDirectoryA(settings.c_str());
  Press(kAcceptButton);
  EXPECT_FALSE(form->hwnd());
  const std::string saved = core::ReadFile(settings);
  EXPECT_NE(saved.find("\"Carla\",16711680,3,\"drop.wav\",0\r\n"), std::string::npos) << saved;
}

TEST_F(OptionsDialog, BlockedUsersAreAddedWithEnterAndComeBackWhenRemoved) {
  Open();
  Press(kSecurityButton);
  const HWND box = Item(2, kBlockBox);
  for (const char* name : {" jOHN smITH ", ""}) {
    Type(box, name);
    Key(box, VK_RETURN);
    EXPECT_EQ(support::RowTexts(Blocked()), (Texts{"Mallory", "John smith", "John smith"}));
  }
  SelectRow(Blocked(), 0);
  Press(kUnblockButton);
  EXPECT_EQ(support::TextOf(box), "Mallory");
  EXPECT_EQ(SelectedRow(Blocked()), 0);
  for (int rows = 2; rows >= 0; --rows, Press(kUnblockButton)) {
    EXPECT_EQ(ListView_GetItemCount(Blocked()), rows);
    EXPECT_EQ(::SendMessageA(Child(2, TOOLBARCLASSNAMEA), TB_ISBUTTONENABLED, kUnblockButton, 0) != 0, rows > 0);
  }
}

TEST_F(OptionsDialog, GroupsAreEditedInTheTree) {
  users.SetGroupLines({});
  Open();
  Press(kGroupsButton);
  const HWND box = Item(3, kGroupBox), tree = Child(3, WC_TREEVIEWA);
  constexpr int kNewGroup = 0, kAdd = 1, kRemove = 2, kEnter = -1;
  const auto after = [&](int button, const char* text) {
    Type(box, text);
    if (button == kEnter)
      Key(box, VK_RETURN);
    else
      Press(kNewGroupButton + button);
    return Tree();
  };
  EXPECT_EQ(after(kAdd, "bob"), "") << "there is no group to add to";
  EXPECT_EQ(after(kEnter, "Friends"), " Friends") << "no group yet, so a new one";
  EXPECT_EQ(after(kEnter, "bob"), " Friends>bob");
  EXPECT_EQ(after(kAdd, "Bob"), " Friends>bob>Bob") << "into the group of the selected member; case counts";
  for (const char* refused : {"bob", "a|b", "  "}) EXPECT_EQ(after(kAdd, refused), " Friends>bob>Bob");
  for (const char* refused : {"Friends", "x|y"}) EXPECT_EQ(after(kNewGroup, refused), " Friends>bob>Bob");
  EXPECT_EQ(after(kNewGroup, "friends"), " Friends>bob>Bob friends");
  EXPECT_EQ(after(kRemove, ""), " Friends>bob>Bob");
  EXPECT_EQ(support::TextOf(box), "friends") << "ready to be added elsewhere";
  TreeView_SelectItem(tree, TreeView_GetRoot(tree));
  EXPECT_EQ(after(kRemove, ""), " Friends>bob>Bob");
  TreeView_SelectItem(tree, TreeView_GetChild(tree, TreeView_GetChild(tree, TreeView_GetRoot(tree))));
  EXPECT_EQ(after(kRemove, ""), " Friends>Bob");
}

TEST_F(OptionsDialog, PagesAndButtonsAreKeyboardAccessible) {
  Open();
  EXPECT_TRUE(Alt('s'));
  EXPECT_EQ(VisiblePage(), 2);
  EXPECT_TRUE(Key(form->hwnd(), VK_TAB, VK_CONTROL));
  EXPECT_EQ(VisiblePage(), 3);
  for (int i = 0; i < 2; ++i) EXPECT_TRUE(Key(form->hwnd(), VK_PRIOR, VK_CONTROL));
  EXPECT_EQ(VisiblePage(), 1);
  ::SetFocus(Positions());
  for (const WPARAM key : {WPARAM{VK_RIGHT}, WPARAM{VK_SPACE}}) ::SendMessageA(Positions(), WM_KEYDOWN, key, 0);
  EXPECT_TRUE(::SendMessageA(Positions(), TB_ISBUTTONCHECKED, kFirstPosition + 2, 0));
  EXPECT_TRUE(Alt('r'));  // the check box here, Remove on other pages
  EXPECT_EQ(::SendMessageA(Item(1, kStartUpBox), BM_GETCHECK, 0, 0), BST_UNCHECKED);
  ::SetFocus(support::ChildrenOf(form->hwnd(), TOOLBARCLASSNAMEA).front());  // that of the commands
  EXPECT_TRUE(Alt('G'));
  EXPECT_EQ(::GetFocus(), Item(3, kGroupBox)) << "from wherever it was";
  // Accept and Add share a letter, which presses Add while there is a name to add.
  for (const char* name : {"bob", ""}) {
    Type(Item(3, kGroupBox), name);
    EXPECT_TRUE(Alt('a'));
    EXPECT_EQ(form->hwnd() != nullptr, *name != '\0');
  }
}

}  // namespace
}  // namespace options
