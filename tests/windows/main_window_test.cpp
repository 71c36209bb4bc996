// The main window with its menus, toolbar and roster. Timer ticks are sent by the tests.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/event_loop.h"
#include "core/globals.h"
#include "support/recording_network.h"
#include "support/window_probe.h"
#include "ui/main/frm_main.h"
#include "ui/main/main_layout.h"
#include "ui/toolkit/menu/window_menu.h"
#include "ui/toolkit/screen.h"

namespace mainwindow {
namespace {

using Texts = std::vector<std::string>;

class MainWindowTest : public testing::Test {
 protected:
  MainWindowTest() {
    support::SetLanguage("English");
    core::gCurName = "me";
    core::gStatus = 0;
    main->Load();
    main->CreateContents();
    main->Move({3000, 3000, 4005, 4995});
    for (const char* name : {"anna", "bob", "carl"}) users.AddUser(name);
    users.UpdateStat();
    Settle();
  }
  ~MainWindowTest() override { ::DestroyWindow(main->hwnd()); }

  MainCommands Commands() {
    return {.openComposer = [this](const std::string& list) { done.push_back("alert " + list); },
            .openChat = [this](const std::string& list) { done.push_back("chat " + list); },
            .showOptions = [this] { done.emplace_back("options"); },
            .showAbout = [this] { done.emplace_back("about"); },
            .shutDown = [this] { done.emplace_back("shut down"); }};
  }

  // Waits for the slowest interval and ticks.
  void Settle() {
    ::Sleep(60);
    ::SendMessageA(main->hwnd(), WM_TIMER, 1, 0);
  }

  void Choose(unsigned command) { ::SendMessageA(main->hwnd(), WM_COMMAND, command, 0); }

  HWND List() const { return support::ChildrenOf(main->hwnd(), WC_LISTVIEWA).at(0); }
  HWND StatusLine() const { return support::ChildrenOf(main->hwnd(), "Static").back(); }
  HWND Tools() const { return support::ChildrenOf(main->hwnd(), TOOLBARCLASSNAMEA).at(0); }

  void Select(int row, bool selected = true) { support::SelectRow(List(), row, selected); }
  int SelectedRow() const { return ListView_GetNextItem(List(), -1, LVNI_SELECTED); }

  int EnabledTools() const {
    int enabled = 0;
    for (int i = 0; i < 3; ++i) {
      const int command = support::ToolCommand(main->hwnd(), i);
      enabled += ::SendMessageA(Tools(), TB_ISBUTTONENABLED, static_cast<WPARAM>(command), 0) != 0;
    }
    return enabled;
  }

  bool Checked(unsigned id) const { return (::GetMenuState(::GetMenu(main->hwnd()), id, 0) & MF_CHECKED) != 0; }
  bool InMenu(unsigned id) const { return toolkit::FindItem(::GetMenu(main->hwnd()), id).has_value(); }

  UserRoster users;
  support::RecordingPort port;
  net::Messenger messenger{port};
  Texts done;
  std::shared_ptr<FrmMain> main = std::make_shared<FrmMain>(users, messenger, Commands());
};

TEST_F(MainWindowTest, MenuCommandsOpenTheirWindows) {
  for (const unsigned command : {mnuChatAll, mnuSndAll, mnuOpts, mnuAbout, mnuClose}) Choose(command);
  ::SendMessageA(main->hwnd(), WM_CLOSE, 0, 0);
  ::SendMessageA(main->hwnd(), WM_ENDSESSION, FALSE, 0);
  EXPECT_EQ(done, (Texts{"chat (All)|", "alert (All)|", "options", "about", "shut down", "shut down"}));
  Choose(mnuStat + 2);
  for (const unsigned state : {0u, 1u, 2u}) EXPECT_EQ(Checked(mnuStat + state), state == 2);
  Choose(mnuStatBar);
  EXPECT_FALSE(Checked(mnuStatBar));
  EXPECT_EQ(::GetWindowLongA(StatusLine(), GWL_STYLE) & WS_VISIBLE, 0);
  support::SetLanguage("Deutsch");
  main->SetLan();
  Settle();
  EXPECT_EQ(support::TextOf(StatusLine()), " 3 Benutzer online (-0)");
}

TEST_F(MainWindowTest, ToolbarIsDisabledWithoutASelection) {
  EXPECT_EQ(EnabledTools(), 0);
  Select(1);
  Select(3);
  Settle();
  EXPECT_EQ(EnabledTools(), 3);
  for (const int button : {0, 1, 2}) support::ClickToolButton(main->hwnd(), button);
  EXPECT_EQ(done, (Texts{"alert anna|carl|", "chat anna|carl|"}));
  EXPECT_EQ(users.BlockedNames(), (Texts{"anna", "carl"}));
  done.clear();
  for (const HWND focus : {List(), Tools()}) {
    ::SetFocus(focus);
    Choose(IDOK);
    EXPECT_EQ(done, Texts{"alert anna|carl|"}) << "Enter writes an alert, but in the roster only";
  }
  Select(-1, false);
  Settle();
  EXPECT_EQ(EnabledTools(), 0);
}

// The control knows rows by index only: left alone it would now select the row after the removed one.
TEST_F(MainWindowTest, SelectionAndCaretStayWithTheirUserWhenAnotherLeaves) {
  RECT bob{};
  ListView_GetItemRect(List(), 2, &bob, LVIR_BOUNDS);
  users.RemoveRow("anna");
  ::PostMessageA(List(), WM_LBUTTONUP, 0, MAKELPARAM(bob.left + 30, bob.top + 3));
  ::SendMessageA(List(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(bob.left + 30, bob.top + 3));
  EXPECT_EQ(users.SelectedRecipients(), "bob|") << "the row that is still drawn there";
  Settle();
  EXPECT_EQ(support::RowTexts(List()), (Texts{"(All)", "bob", "carl"}));
  EXPECT_EQ(SelectedRow(), 1);
  EXPECT_EQ(ListView_GetNextItem(List(), -1, LVNI_FOCUSED), 1);
  EXPECT_EQ(ListView_GetSelectionMark(List()), 1);
  users.RemoveRow("bob");
  Settle();
  EXPECT_EQ(SelectedRow(), -1);
  EXPECT_EQ(EnabledTools(), 0);
}

TEST_F(MainWindowTest, MinimisingHidesAndTheMenuFollows) {
  main->ShowMe();
  EXPECT_EQ(::GetFocus(), List());
  ::SetFocus(nullptr);  // as Windows does with a window that is minimised
  ::SendMessageA(main->hwnd(), WM_ACTIVATE, WA_INACTIVE, 0);
  ::SendMessageA(main->hwnd(), WM_SETFOCUS, 0, 0);
  EXPECT_EQ(::GetFocus(), List());
  Settle();
  EXPECT_TRUE(InMenu(mnuHide));
  EXPECT_FALSE(InMenu(mnuShowMe));
  ::ShowWindow(main->hwnd(), SW_MINIMIZE);
  core::RunPendingEvents();
  Settle();
  EXPECT_FALSE(::IsWindowVisible(main->hwnd()));
  EXPECT_TRUE(InMenu(mnuShowMe));
  EXPECT_FALSE(InMenu(mnuHide));
  EXPECT_EQ(main->Restore(), (core::WindowBounds{3000, 3000, 4005, 4995}));
  EXPECT_FALSE(::IsWindowVisible(main->hwnd()));
  main->ShowMe();
  EXPECT_TRUE(::IsWindowVisible(main->hwnd()));
  EXPECT_FALSE(::IsIconic(main->hwnd()));
  ::ShowWindow(main->hwnd(), SW_MAXIMIZE);
  Choose(mnuMoveSub + 3);
  EXPECT_EQ(support::PlaceOf(main->hwnd()).right, toolkit::WorkAreaPixels().right);
  EXPECT_FALSE(::IsZoomed(main->hwnd()));
}

}  // namespace
}  // namespace mainwindow
