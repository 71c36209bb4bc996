// Chat windows as real windows, on a recorded network.
#include <windows.h>
#include <commctrl.h>
#include <richedit.h>

#include "core/clock.h"
#include "core/event_loop.h"
#include "tests/windows/conversation_fixture.h"
#include "ui/conversation/chat_menu.h"
#include "ui/conversation/frm_chat.h"
#include "ui/toolkit/menu/window_menu.h"
#include "ui/toolkit/screen.h"

namespace conversation {
namespace {

using support::ChildOf;
using support::ChildrenOf;
using support::PlaceOf;
using toolkit::Px;
using toolkit::Tw;
using toolkit::Twips;
using toolkit::operator""_dp;
using Texts = std::vector<std::string>;
using namespace chatmenu;

constexpr std::int32_t kRed = 0x0000FF;

std::size_t OpenWindowsCount() { return support::WindowsOf("frmChat").size(); }

class ChatTest : public ConversationTest {
 protected:
  ChatTest() {
    core::gSafe = 0;
    core::gChatLeft = 1500;
    core::gChatTop = 750;
    core::gChatWidth = 4500;
    core::gChatHeight = 6000;
    for (const char* name : {"-bob", "#x", "a&b", "(Friends)"}) roster.AddUser(name);
  }

  void Open(const char* participants) {
    chat = windows.StartChat(participants);
    core::RunPendingEvents();
  }

  HWND hwnd() const { return chat->hwnd(); }
  HWND txtMsg() const { return ChildrenOf(hwnd(), "RichEdit20A").at(0); }
  HWND txtSnd() const { return ChildrenOf(hwnd(), "Edit").at(0); }
  HWND lvUsers() const { return ChildrenOf(hwnd(), "SysListView32").at(0); }
  HWND lblStat() const { return ChildrenOf(hwnd(), "Static").at(3); }
  std::string Conversation() const { return support::TextOf(txtMsg()); }

  void Choose(unsigned command) const { ::SendMessageA(hwnd(), WM_COMMAND, command, 0); }

  // The Users menu after it opened.
  HMENU UsersMenu() const {
    const auto remove = toolkit::FindItem(::GetMenu(hwnd()), mnuRemove);
    ::SendMessageA(hwnd(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(remove->menu), 1);
    return remove->menu;
  }

  COLORREF ColourAt(LONG at) const {
    CHARRANGE range{at, at + 1};
    CHARFORMATA format{};
    format.cbSize = sizeof format;
    ::SendMessageA(txtMsg(), EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range));
    ::SendMessageA(txtMsg(), EM_GETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&format));
    return format.crTextColor;
  }

  std::shared_ptr<FrmChat> chat;
};

TEST_F(ChatTest, OpensAtTheSavedPositionWithItsParticipants) {
  Open("|anna|zoe|");
  const RECT place = PlaceOf(hwnd()), shared{Px(Twips{1500}), Px(Twips{750}), Px(Twips{6000}), Px(Twips{6750})};
  EXPECT_TRUE(::EqualRect(&place, &shared));
  EXPECT_EQ(support::RowTexts(lvUsers()), (Texts{"anna", "zoe"}));
  EXPECT_EQ(support::TextOf(lblStat()), " 2 users in this chat");
  EXPECT_EQ(::GetFocus(), txtSnd());
  Open("");
  EXPECT_EQ(support::RowTexts(lvUsers()), Texts{}) << "the user may ask for an empty one";
}

TEST_F(ChatTest, ALineOpensAWindowWithoutTakingTheFocus) {
  Open("anna|");
  const HWND focus = ::GetFocus();
  const auto other = windows.OpenChat("|zoe");
  for (int i = 0; i < 20; ++i, ::Sleep(10)) core::RunPendingEvents();
  ASSERT_NE(other, nullptr);
  EXPECT_TRUE(::IsWindowVisible(static_cast<FrmChat&>(*other).hwnd()));
  EXPECT_EQ(::GetFocus(), focus);
  EXPECT_EQ(windows.ChatWindows().size(), 2u);
  EXPECT_TRUE(windows.OpenChat("|")->AddMsg("hello", "", 0)) << "a sender may have an empty name";
}

TEST_F(ChatTest, LinesOpenALimitedNumberOfWindows) {
  for (std::size_t i = 0; i < OpenWindows::kMaxChats + 5; ++i) windows.OpenChat("|user" + std::to_string(i));
  EXPECT_EQ(OpenWindowsCount(), OpenWindows::kMaxChats);
  Open("anna|");
  EXPECT_EQ(OpenWindowsCount(), OpenWindows::kMaxChats + 1) << "the limit does not apply to the user";
}

TEST_F(ChatTest, ALineShowsItsSendersColour) {
  Open("anna|");
  EXPECT_FALSE(chat->AddMsg("hi", "zoe", 0));
  EXPECT_TRUE(chat->AddMsg("hi", "ANNA", kRed));
  EXPECT_TRUE(chat->AddMsg("a\r\nb", "anna", static_cast<std::int32_t>(0x80000000u + COLOR_WINDOWTEXT)));
  EXPECT_EQ(Conversation(), "ANNA:\thi\r\nanna:\ta\r\nb\r\n");
  CHARRANGE caret{};
  ::SendMessageA(txtMsg(), EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&caret));
  EXPECT_EQ(std::pair(caret.cpMin, caret.cpMax), std::pair(19L, 19L));
  for (const LONG at : {0, 7}) EXPECT_EQ(ColourAt(at), 0x0000FFu);
  for (const LONG at : {10, 17}) EXPECT_EQ(ColourAt(at), ::GetSysColor(COLOR_WINDOWTEXT)) << "both paragraphs";
  Choose(mnuExportC);
  EXPECT_NE(support::ClipboardText().find("\\red255\\green0\\blue0;"), std::string::npos);
}

TEST_F(ChatTest, TimeIsAddedWhileChecked) {
  Open("anna|");
  Choose(mnuTime);
  chat->AddMsg("one", "anna", 0);
  Choose(mnuTime);
  chat->AddMsg("two", "anna", 0);
  const std::string text = Conversation(), rest = " anna:\tone\r\nanna:\ttwo\r\n";
  ASSERT_TRUE(text.ends_with(rest)) << text;
  EXPECT_EQ(text.size() - rest.size(), core::TimeText().size()) << text;
  Choose(mnuCLS);
  EXPECT_EQ(Conversation(), "");
  chat->AddMsg("three", "anna", kRed);
  EXPECT_EQ(Conversation(), "anna:\tthree\r\n");
}

TEST_F(ChatTest, SendsByKeyButtonAndToolbar) {
  Open("-bob|");
  const auto type = [this](const char* text) { ::SetWindowTextA(txtSnd(), text); };
  for (const char* text : {"   ", "one"}) {
    type(text);
    support::FilterKey(txtSnd(), WM_KEYDOWN, VK_RETURN);
  }
  ::SetFocus(lvUsers());
  type("two");
  ::SendMessageA(ChildrenOf(hwnd(), "Button").at(0), BM_CLICK, 0, 0);
  EXPECT_EQ(::GetFocus(), txtSnd());
  type("three");
  support::ClickToolButton(hwnd(), 0);
  EXPECT_EQ(port.sent, (Texts{"me|P/\xDEone|-bob", "me|P/\xDEtwo|-bob", "me|P/\xDEthree|-bob"}));
  EXPECT_EQ(support::TextOf(txtSnd()), "");
  EXPECT_EQ(Conversation(), "") << "own lines are shown when they return from the network";
}

TEST_F(ChatTest, KeysOfTheTextBoxes) {
  Open("anna|");
  for (const HWND stop : {ChildrenOf(hwnd(), TOOLBARCLASSNAMEA).at(0), lvUsers(), txtMsg(), txtSnd()}) {
    support::FilterKey(::GetFocus(), WM_KEYDOWN, VK_TAB);
    EXPECT_EQ(::GetFocus(), stop);
  }
  ::SetWindowTextA(txtSnd(), "typed");
  ::SetFocus(ChildrenOf(hwnd(), TOOLBARCLASSNAMEA).at(0));
  support::FilterKey(::GetFocus(), WM_KEYDOWN, VK_TAB, VK_SHIFT);
  EXPECT_EQ(::GetFocus(), txtSnd());
  EXPECT_EQ(::SendMessageA(txtSnd(), EM_GETSEL, 0, 0), 0) << "the next key must not replace the text";
  for (const HWND text : {txtMsg(), txtSnd()}) support::FilterKey(text, WM_KEYDOWN, VK_ESCAPE);
  core::RunPendingEvents();
  EXPECT_EQ(OpenWindowsCount(), 1u);
  support::SelectRow(lvUsers(), 0);
  ::SendMessageA(lvUsers(), WM_KEYDOWN, VK_DELETE, 0);
  EXPECT_EQ(support::TextOf(lblStat()), " 0 users in this chat");
}

Texts UserCaptions(HMENU menu) {
  Texts captions;
  for (int i = 0; i < ::GetMenuItemCount(menu); ++i)
    if (::GetMenuItemID(menu, i) >= mnuUser) captions.push_back(support::MenuText(menu, i));
  return captions;
}

TEST_F(ChatTest, TheUsersMenuOffersWhoIsOnline) {
  core::gSafe = 1;
  Open("anna|");
  const HMENU menu = UsersMenu();
  EXPECT_EQ(UserCaptions(menu), (Texts{"(All)", "anna", "-bob", "#x", "a&&b"}));
  EXPECT_EQ(toolkit::FindItem(menu, mnuRemove)->position, ::GetMenuItemCount(menu) - 1);
  roster.RemoveRow("anna");
  chat->RefListOfUsers();
  EXPECT_EQ(UserCaptions(menu).size(), 5u) << "an open menu keeps its entries";
  for (unsigned entry = 1; entry < 6; ++entry) Choose(mnuUser + entry);  // the last is none
  EXPECT_EQ(support::RowTexts(lvUsers()), (Texts{"anna", "-bob", "#x", "a&b"}));
  selected = "user4711|user4712|";
  Choose(mnuAdd);
  EXPECT_EQ(support::TextOf(lblStat()), " 6 users in this chat");
}

TEST_F(ChatTest, ThousandsOfUsersAreOfferedInGroups) {
  core::gSafe = 1;
  for (int i = 0; i < 4995; ++i) roster.AddUser("user" + std::to_string(i));
  Open("");
  const HMENU menu = UsersMenu();
  const int group = 5;
  const int position = toolkit::FindItem(menu, mnuOnlineSep)->position + 1 + group;
  EXPECT_EQ(support::MenuText(menu, position), "user495 - user594");
  const HMENU names = ::GetSubMenu(menu, position);
  for (const HMENU opens : {::GetSubMenu(menu, position + 1), names})
    ::SendMessageA(hwnd(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(opens), 0);
  EXPECT_EQ(::GetMenuItemCount(::GetSubMenu(menu, position + 1)), 0);
  EXPECT_EQ(UserCaptions(names).size(), 100u);
  Choose(mnuUser + 99);
  Choose(mnuUser + 100);
  EXPECT_EQ(support::RowTexts(lvUsers()), Texts{"user594"});
}

TEST_F(ChatTest, ViewOptions) {
  Open("anna|");
  const auto checked = [this](unsigned id) { return (::GetMenuState(::GetMenu(hwnd()), id, 0) & MF_CHECKED) != 0; };
  for (const bool onTop : {true, false}) {
    Choose(mnuOnTop);
    EXPECT_EQ((::GetWindowLongPtrA(hwnd(), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0, onTop);
    EXPECT_EQ(checked(mnuOnTop), onTop);
  }
  const LONG bottom = PlaceOf(txtSnd()).bottom;
  for (const bool shown : {false, true}) {
    Choose(mnuViewStat);
    EXPECT_EQ(::IsWindowVisible(lblStat()) != 0, shown);
    EXPECT_EQ(checked(mnuViewStat), shown);
    EXPECT_EQ(PlaceOf(txtSnd()).bottom == bottom, shown);
  }
}

TEST_F(ChatTest, TheWheelScrollsTheConversation) {
  Open("anna|");
  std::string lines;
  for (int i = 0; i < 100; ++i) lines += "line\r\n";
  chat->AddMsg(lines, "anna", 0);
  const auto firstLine = [this] { return ::SendMessageA(txtMsg(), EM_GETFIRSTVISIBLELINE, 0, 0); };
  for (int i = 0; i < 200 && firstLine() == 0; ++i, ::Sleep(10)) core::RunPendingEvents();
  const auto bottom = firstLine();
  ASSERT_EQ(::GetFocus(), txtSnd());
  ::SendMessageA(hwnd(), WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA), 0);
  EXPECT_LT(firstLine(), bottom);
}

TEST_F(ChatTest, TheBarIsDragged) {
  Open("anna|");
  const HWND picSep = ChildrenOf(hwnd(), "Static").back();
  const LONG before = PlaceOf(lvUsers()).bottom;
  POINT bar{0, before + 2};
  ::ScreenToClient(hwnd(), &bar);
  ::SendMessageA(hwnd(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(50, bar.y));
  EXPECT_TRUE(::IsWindowVisible(picSep));
  ::SendMessageA(hwnd(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(50, bar.y + 40));
  ::SendMessageA(hwnd(), WM_LBUTTONUP, 0, MAKELPARAM(50, bar.y + 40));
  EXPECT_FALSE(::IsWindowVisible(picSep));
  EXPECT_EQ(PlaceOf(lvUsers()).bottom, before + 40);
}

TEST_F(ChatTest, ClosingSavesItsPosition) {
  Open("anna|");
  ::MoveWindow(hwnd(), 30, 40, 350, 450, TRUE);
  const auto closed = chat;
  Choose(mnuClose);
  EXPECT_EQ(closed->hwnd(), nullptr);
  EXPECT_EQ(windows.ChatWindows().size(), 0u);
  for (const auto& [kept, pixels] :
       {std::pair{core::gChatLeft, 30}, {core::gChatTop, 40}, {core::gChatWidth, 350}, {core::gChatHeight, 450}})
    EXPECT_EQ(kept, Tw(pixels).value);
  EXPECT_FALSE(closed->AddMsg("late", "anna", 0));
  closed->RemoveUser("anna");
  closed->RefUserList();
}

}  // namespace
}  // namespace conversation
