// The options dialog as a real window.
#include "ui/options/frm_opt.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "core/event_loop.h"
#include "core/files.h"
#include "core/globals.h"
#include "core/language.h"
#include "support/recording_program.h"
#include "tests/windows/box_answers.h"
#include "tests/windows/leftovers.h"
#include "tests/windows/window_probe.h"
#include "ui/options/drawn_images.h"
#include "ui/options/frm_opt_parts.h"
#include "ui/options/palette.h"
#include "ui/toolkit/modal.h"

namespace {

std::string gEvents;

}  // namespace

// What the dialog does to the network, "; " behind each.
void support::Record(std::string event) { gEvents += event + "; "; }

namespace options {
namespace {

using support::BoxAnswers;
using Texts = std::vector<std::string>;

class OptionsDialog : public testing::Test {
 protected:
  OptionsDialog() {
    gEvents.clear();
    core::gLangError = 0;
    core::gLanguage = "English";
    core::LoadLang();
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

  HWND Page(int index) const { return Pages().at(static_cast<std::size_t>(index)); }
  std::vector<HWND> Pages() const { return support::ChildrenOf(form->hwnd(), "picOpt"); }
  HWND Item(int page, int id) const { return ::GetDlgItem(Page(page), id); }
  HWND Child(int page, const char* className, std::size_t index = 0) const {
    return support::ChildrenOf(Page(page), className).at(index);
  }
  HWND Swatches() const { return Child(0, WC_LISTVIEWA); }
  HWND Sounds() const { return Child(1, WC_LISTVIEWA); }
  HWND Blocked() const { return Child(2, WC_LISTVIEWA); }
  HWND Positions() const { return Child(1, TOOLBARCLASSNAMEA); }
  void Press(int command) const { ::SendMessageA(form->hwnd(), WM_COMMAND, static_cast<WPARAM>(command), 0); }
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
  static void SelectRow(HWND list, int row) {
    ListView_SetItemState(list, row, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  }

  // The tree as text: groups and members in order, members behind ">".
  std::string Tree() const {
    std::string text;
    const HWND tree = Child(3, WC_TREEVIEWA);
    for (HTREEITEM group = TreeView_GetChild(tree, TreeView_GetRoot(tree)); group;
         group = TreeView_GetNextSibling(tree, group)) {
      text += NodeText(tree, group);
      for (HTREEITEM user = TreeView_GetChild(tree, group); user; user = TreeView_GetNextSibling(tree, user))
        text += ">" + NodeText(tree, user);
      text += " ";
    }
    return text;
  }
  static std::string NodeText(HWND tree, HTREEITEM node) {
    char text[260] = "";
    TVITEMA item{};
    item.mask = TVIF_TEXT;
    item.hItem = node;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    ::SendMessageA(tree, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
    return text;
  }

  support::RecordingProgram program;
  mainwindow::UserRoster& users = program.users;
  std::shared_ptr<FrmOpt> form = std::make_shared<FrmOpt>(program, [] {});
};

TEST_F(OptionsDialog, ShowsTheSettings) {
  Open();
  EXPECT_EQ(form->Text(), "Options - Quillon");
  EXPECT_EQ(support::TextOf(Item(0, kNameBox)), "Anna");
  EXPECT_EQ(ListView_GetItemCount(Swatches()), 16);
  EXPECT_EQ(SelectedRow(Swatches()), 4);
  EXPECT_TRUE(::SendMessageA(Positions(), TB_ISBUTTONCHECKED, kFirstPosition + 1, 0));
  EXPECT_EQ(support::RowTexts(Sounds()),
            (Texts{"(Silent)", "(Beep)", "chime.wav", "drop.wav", "knock.wav", "marimba.wav"}));
  EXPECT_EQ(SelectedRow(Sounds()), 0);
  EXPECT_EQ(::SendMessageA(Item(1, kStartUpBox), BM_GETCHECK, 0, 0), BST_CHECKED);
  EXPECT_EQ(support::TextOf(Item(1, kLanguageBox)), "English");
  EXPECT_EQ(support::RowTexts(Blocked()), (Texts{"Mallory", "John smith"}));
  EXPECT_EQ(Tree(), "Friends>bob>carl Rest>dora ");
  EXPECT_EQ(VisiblePage(), 0);
}

TEST_F(OptionsDialog, AnUnknownColourOrSoundSelectsNothingAndStays) {
  core::gColour = 12345;
  core::gSound = "gone.wav";
  core::gPopPos = 0;
  core::gLanguage = "Klingon";
  Open();
  EXPECT_EQ(SelectedRow(Swatches()), -1);
  EXPECT_EQ(SelectedRow(Sounds()), -1);
  Press(kFirstCommandButton);
  EXPECT_FALSE(form->hwnd());
  EXPECT_EQ(core::gColour, 12345);
  EXPECT_EQ(core::gSound, "gone.wav");
  EXPECT_EQ(core::gPopPos, 0);
  EXPECT_EQ(core::gLanguage, "Klingon");
}

TEST_F(OptionsDialog, NamesOfAnyLengthComeBackWhole) {
  const std::string longName(10'000, 'x');
  users.AddBlocked(longName);
  users.SetGroupLines({longName + "|" + longName + "|"});
  const auto blocked = users.BlockedNames(), groups = users.GroupLines();
  Open();
  Press(kFirstCommandButton);
  EXPECT_EQ(users.BlockedNames(), blocked);
  EXPECT_EQ(users.GroupLines(), groups);
}

// A window that is kept on top, and what was seen of it while the dialog was open.
struct {
  HWND before, dialog;
  bool wasOnTop;
} kept;

bool IsOnTop(HWND hwnd) { return (::GetWindowLongA(hwnd, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; }

void CALLBACK LookAndClose(HWND, UINT, UINT_PTR timer, DWORD) {
  ::KillTimer(nullptr, timer);
  kept.wasOnTop = IsOnTop(kept.before);
  ::SendMessageA(kept.dialog, WM_COMMAND, kFirstCommandButton + 1, 0);
}

TEST_F(OptionsDialog, TheWindowsBeforeStepBackMeanwhile) {
  const HWND before = ::CreateWindowExA(WS_EX_TOPMOST, "EDIT", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 99, 99,
                                        nullptr, nullptr, nullptr, nullptr);
  bool usable = false, onTop = false;
  form->onDestroyed = [&] {
    usable = ::IsWindowEnabled(before);
    onTop = IsOnTop(before);
  };
  form->Load();
  kept = {before, form->hwnd(), true};
  ::SetTimer(nullptr, 0, USER_TIMER_MINIMUM, LookAndClose);
  toolkit::RunModal(*form);
  EXPECT_FALSE(kept.wasOnTop);
  EXPECT_TRUE(usable);
  EXPECT_TRUE(onTop);
  ::DestroyWindow(before);
}

TEST_F(OptionsDialog, SwatchesAndPositionsLookAsTheySay) {
  const Scratch surface({40, 30});
  const toolkit::ImageList list = surface.NewList(2);
  COLORREF inSwatch = 0, inQuarter = 0, outside = 0;
  surface.Add(list.get(), [&](HDC dc, const RECT& box) {
    DrawSwatch(dc, box, 0x8000FF);
    inSwatch = ::GetPixel(dc, 20, 15);
  });
  surface.Add(list.get(), [&](HDC dc, const RECT& box) {
    DrawPosition(dc, box, 3);
    inQuarter = ::GetPixel(dc, 10, 22);
    outside = ::GetPixel(dc, 30, 22);
  });
  EXPECT_EQ(inSwatch, 0x8000FFu);
  EXPECT_EQ(inQuarter, ::GetSysColor(COLOR_HIGHLIGHTTEXT));
  EXPECT_EQ(outside, ::GetSysColor(COLOR_HIGHLIGHT));
}

TEST_F(OptionsDialog, TheNameMustNotBeLeftEmpty) {
  Open();
  const HWND name = Item(0, kNameBox);
  ::SetFocus(name);
  const BoxAnswers answering;
  Type(name, "   ");
  ::SetFocus(Swatches());
  Pump();
  EXPECT_EQ(BoxAnswers::Texts(), (Texts{"The screen name cannot be empty."}));
  EXPECT_EQ(::GetFocus(), name);
  EXPECT_EQ(support::TextOf(name), "");

  Type(name, "  Berta ");
  ::SetFocus(Swatches());
  Pump();
  EXPECT_EQ(support::TextOf(name), "Berta");
  EXPECT_EQ(BoxAnswers::Texts().size(), 1u);

  ::SetFocus(name);
  Type(name, "");
  Press(kFirstPageButton + 2);
  Pump();
  EXPECT_EQ(BoxAnswers::Texts().size(), 2u);
  EXPECT_EQ(VisiblePage(), 0) << "the page is held too";
}

TEST_F(OptionsDialog, AcceptRefusesNamesAndTakesGoodOnes) {
  for (const char* name : {"Anna", "Bob"}) users.AddUser(name);
  Open();
  const BoxAnswers answering;
  ::SendMessageA(Item(1, kLanguageBox), CB_SETCURSEL, 1, 0);
  for (const char* name : {"bob", "  ", "a|b"}) {
    Type(Item(0, kNameBox), name);
    Press(kFirstCommandButton);
    ASSERT_TRUE(form->hwnd()) << name;
  }
  EXPECT_EQ(BoxAnswers::Texts(), (Texts{core::GetText(2204), core::GetText(2205), core::GetText(2205)}))
      << "and no question about the language yet";
  ::SendMessageA(Item(1, kLanguageBox), CB_SETCURSEL, 0, 0);
  EXPECT_EQ(gEvents, "");

  Type(Item(0, kNameBox), " Carla ");
  SelectRow(Swatches(), 9);
  ::SendMessageA(Positions(), TB_CHECKBUTTON, kFirstPosition + 2, TRUE);
  SelectRow(Sounds(), 3);
  ::SendMessageA(Item(1, kStartUpBox), BM_SETCHECK, BST_UNCHECKED, 0);
  Press(kFirstCommandButton);
  EXPECT_FALSE(form->hwnd());
  EXPECT_EQ(gEvents, "close Anna; open Carla; restore main; ");
  EXPECT_EQ(core::ReadFile(core::InProgramDirectory("User.ini")),
            "\"English\"\r\n3\r\n300,150,2505,4605\r\n\"Carla\",16711680,3,\"drop.wav\",0\r\n0,0,0,0\r\n"
            "2\r\n\"Mallory\"\r\n\"John smith\"\r\n2\r\n\"Friends|bob|carl|\"\r\n\"Rest|dora|\"\r\n");
}

TEST_F(OptionsDialog, BlockedUsersAreAddedWithEnterAndComeBackWhenRemoved) {
  Open();
  Press(kFirstPageButton + 2);
  const HWND box = Item(2, kBlockBox), tools = Child(2, TOOLBARCLASSNAMEA);
  const auto canRemove = [tools] { return ::SendMessageA(tools, TB_ISBUTTONENABLED, kFirstBlockButton + 1, 0) != 0; };
  EXPECT_EQ(::GetFocus(), box);
  Type(box, " jOHN smITH ");
  EXPECT_TRUE(Key(box, VK_RETURN));
  EXPECT_EQ(support::RowTexts(Blocked()), (Texts{"Mallory", "John smith", "John smith"}));
  EXPECT_EQ(SelectedRow(Blocked()), 2);
  EXPECT_EQ(support::TextOf(box), "");
  Key(box, VK_RETURN);
  EXPECT_EQ(ListView_GetItemCount(Blocked()), 3);

  SelectRow(Blocked(), 0);
  Press(kFirstBlockButton + 1);
  EXPECT_EQ(support::TextOf(box), "Mallory");
  EXPECT_EQ(SelectedRow(Blocked()), 0);
  EXPECT_TRUE(canRemove());
  Press(kFirstBlockButton + 1);
  Press(kFirstBlockButton + 1);
  EXPECT_EQ(ListView_GetItemCount(Blocked()), 0);
  EXPECT_FALSE(canRemove());
}

TEST_F(OptionsDialog, GroupsAreEditedInTheTree) {
  users.SetGroupLines({});
  Open();
  Press(kFirstPageButton + 3);
  const HWND box = Item(3, kGroupBox), tree = Child(3, WC_TREEVIEWA);
  const auto press = [&](int button, const char* text) {
    Type(box, text);
    Press(kFirstGroupButton + button);
  };
  press(1, "bob");  // no group to go to
  EXPECT_EQ(Tree(), "");
  Type(box, "Friends");
  Key(box, VK_RETURN);  // no group yet, so a new one
  Type(box, "bob");
  Key(box, VK_RETURN);
  EXPECT_EQ(Tree(), "Friends>bob ");
  press(1, "bob");  // there already
  press(1, "a|b");
  press(1, "  ");
  press(1, "Bob");  // into the group of the selected member; case counts
  press(0, "Friends");
  press(0, "x|y");
  press(0, "friends");
  EXPECT_EQ(Tree(), "Friends>bob>Bob friends ");
  EXPECT_EQ(support::TextOf(box), "friends");

  press(2, "");
  EXPECT_EQ(Tree(), "Friends>bob>Bob ");
  EXPECT_EQ(support::TextOf(box), "friends");
  TreeView_SelectItem(tree, TreeView_GetRoot(tree));
  press(2, "");
  TreeView_SelectItem(tree, TreeView_GetChild(tree, TreeView_GetChild(tree, TreeView_GetRoot(tree))));
  press(2, "");
  EXPECT_EQ(Tree(), "Friends>Bob ");
  EXPECT_EQ(support::TextOf(box), "bob");
}

TEST_F(OptionsDialog, ThePagesAndButtonsAnswerTheKeyboard) {
  Open();
  EXPECT_TRUE(Alt('s'));
  EXPECT_EQ(VisiblePage(), 2);
  EXPECT_TRUE(Key(form->hwnd(), VK_TAB, VK_CONTROL));
  EXPECT_EQ(VisiblePage(), 3);
  EXPECT_TRUE(Key(form->hwnd(), VK_PRIOR, VK_CONTROL));
  EXPECT_TRUE(Key(form->hwnd(), VK_PRIOR, VK_CONTROL));
  EXPECT_EQ(VisiblePage(), 1);
  ::SetFocus(Positions());
  for (const WPARAM key : {WPARAM{VK_RIGHT}, WPARAM{VK_SPACE}}) ::SendMessageA(Positions(), WM_KEYDOWN, key, 0);
  EXPECT_TRUE(::SendMessageA(Positions(), TB_ISBUTTONCHECKED, kFirstPosition + 2, 0));
  EXPECT_TRUE(Alt('r'));  // the check box here, Remove on other pages
  EXPECT_EQ(::SendMessageA(Item(1, kStartUpBox), BM_GETCHECK, 0, 0), BST_UNCHECKED);
  EXPECT_EQ(Tree(), "Friends>bob>carl Rest>dora ");
  ::SetFocus(support::ChildrenOf(form->hwnd(), TOOLBARCLASSNAMEA).front());  // that of the commands
  EXPECT_TRUE(Alt('G'));
  EXPECT_EQ(VisiblePage(), 3);
  EXPECT_EQ(::GetFocus(), Item(3, kGroupBox));  // from wherever it was
  // Accept and Add share a letter: it is Add's while there is a name to add.
  Type(Item(3, kGroupBox), "bob");
  EXPECT_TRUE(Alt('a'));
  EXPECT_TRUE(form->hwnd());
  Type(Item(3, kGroupBox), "");
  EXPECT_TRUE(Alt('a'));
  EXPECT_FALSE(form->hwnd());
}

TEST_F(OptionsDialog, ALanguageFileThatBreaksChangesNothing) {
  const std::string path = core::InProgramDirectory("Lang.con"), whole = core::ReadFile(path);
  Open();
  const BoxAnswers answering(IDYES);
  ::SendMessageA(Item(1, kLanguageBox), CB_SETCURSEL, 2, 0);
  core::WriteFileSafely(path, whole.substr(0, whole.size() / 2) + "\r\nbroken,line\r\n");
  Press(kFirstCommandButton);
  core::WriteFileSafely(path, whole);
  EXPECT_EQ(BoxAnswers::Texts().back(), "Run-time error '13':\r\n\r\nType mismatch");
  ASSERT_TRUE(form->hwnd());
  EXPECT_EQ(core::gLanguage, "English");
  EXPECT_EQ(core::GetText(2014), "&Run Quillon on StartUp");
  EXPECT_EQ(gEvents, "");
}

TEST_F(OptionsDialog, LeavesNothingBehind) {
  support::ExpectNothingLeft(20, [this] {
    form = std::make_shared<FrmOpt>(program, [] {});
    Open();
    ::DestroyWindow(form->hwnd());
  });
}

}  // namespace
}  // namespace options
