// The composer and the popups as real windows. Timer ticks of popups are sent by the tests, so that nothing depends on
// the speed of the machine.
#include <algorithm>

#include "core/event_loop.h"
#include "core/runtime_error.h"
#include "tests/support/error_of.h"
#include "tests/windows/conversation_fixture.h"
#include "ui/conversation/clipboard.h"
#include "ui/conversation/frm_pop.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/screen.h"

namespace conversation {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;
using support::ChildOf;
using support::ChildrenOf;
using support::FilterKey;
using support::PlaceOf;
using toolkit::Px;

constexpr int kSend = 0, kClose = 1;

class ComposerTest : public ConversationTest {
 protected:
  HWND Composer() const {
    const auto open = support::WindowsOf("frmCom");
    return open.empty() ? nullptr : open.front();
  }
  HWND TxtMsg() const { return ChildrenOf(Composer(), "Edit").at(0); }
  HWND LvUsers() const { return ChildrenOf(Composer(), WC_LISTVIEWA).at(0); }
};

TEST_F(ComposerTest, OneComposerTakesAllRequests) {
  for (const char* nobody : {"|", ""}) windows.OpenComposer(nobody);
  EXPECT_EQ(Composer(), nullptr);
  windows.OpenComposer("bob|Anna|");
  windows.OpenComposer("anna|carla|");
  EXPECT_EQ(support::WindowsOf("frmCom").size(), 1u);
  EXPECT_EQ(support::RowTexts(LvUsers()), (Texts{"bob", "Anna", "carla"}));
  EXPECT_EQ(::GetFocus(), TxtMsg());
}

// One by one in row order; the text is unchanged.
TEST_F(ComposerTest, SendsToItsRecipientsAndCloses) {
  const auto send = [this](const char* recipients, const std::string& text, int button) {
    windows.OpenComposer(recipients);
    ::SetWindowTextA(TxtMsg(), text.c_str());
    support::ClickToolButton(Composer(), button);
    return Composer() == nullptr;
  };
  std::string largest;
  while (largest.size() < 60000) largest += "eighteen letters\r\n";
  largest.resize(60000, 'x');
  EXPECT_TRUE(send("bob|mallory|", "  two\r\nlines ", kSend));
  EXPECT_FALSE(send("bob|", "   ", kSend)) << "an alert of blanks is not sent";
  EXPECT_EQ(::SendMessageA(TxtMsg(), EM_GETLIMITTEXT, 0, 0), 60000) << "the limit of a datagram";
  EXPECT_TRUE(send("bob|", "never mind", kClose));
  EXPECT_TRUE(send("bob|", largest, kSend));
  EXPECT_EQ(port.sent,
            (Texts{"me|P/\xDF  two\r\nlines|bob", "me|P/\xDF  two\r\nlines|mallory", "me|P/\xDF" + largest + "|bob"}));
  EXPECT_EQ(::ImageList_GetImageCount(toolkit::SharedPictures(res::Strip::Roster)),
            res::InfoOf(res::Strip::Roster).count)
      << "the roster keeps its pictures";
}

// Sending runs events before the window closes: a double click must not send twice, and a new request opens a new
// alert.
TEST_F(ComposerTest, IgnoresASecondClickOrCloseWhileItSends) {
  for (const bool twice : {true, false}) {
    port.sent.clear();
    windows.OpenComposer("bob|");
    ::SetWindowTextA(TxtMsg(), "once");
    const auto command = static_cast<WPARAM>(support::ToolCommand(Composer(), kSend));
    ::PostMessageA(Composer(), twice ? WM_COMMAND : WM_CLOSE, twice ? command : 0, 0);
    support::ClickToolButton(Composer(), kSend);
    EXPECT_EQ(port.sent, Texts{"me|P/\xDFonce|bob"});
    EXPECT_EQ(Composer(), nullptr);
  }
}

TEST_F(ComposerTest, KeysOfTheTextBox) {
  windows.OpenComposer("bob|");
  ::SetWindowTextA(TxtMsg(), "select me");
  EXPECT_TRUE(FilterKey(TxtMsg(), WM_KEYDOWN, 'A', VK_CONTROL));
  EXPECT_EQ(::SendMessageA(TxtMsg(), EM_GETSEL, 0, 0), MAKELRESULT(0, 9));
  for (const HWND stop : {ChildrenOf(Composer(), TOOLBARCLASSNAMEA).at(0), LvUsers(), TxtMsg()}) {
    EXPECT_TRUE(FilterKey(::GetFocus(), WM_KEYDOWN, VK_TAB));
    EXPECT_EQ(::GetFocus(), stop);
  }
  EXPECT_TRUE(FilterKey(TxtMsg(), WM_KEYDOWN, VK_TAB, VK_SHIFT));
  EXPECT_EQ(::GetFocus(), LvUsers());
  FilterKey(TxtMsg(), WM_KEYDOWN, VK_ESCAPE);
  core::RunPendingEvents();
  EXPECT_NE(Composer(), nullptr) << "Escape must not discard the text";
  EXPECT_TRUE(FilterKey(TxtMsg(), WM_SYSCHAR, 's'));
  EXPECT_EQ(port.sent, Texts{"me|P/\xDFselect me|bob"});
}

constexpr WPARAM kTimer = 2;

std::vector<HWND> Popups() { return support::WindowsOf("frmPop"); }

class PopupTest : public ConversationTest {
 protected:
  HWND Show(const std::string& text, const char* sender = "anna") {
    const auto before = Popups();
    windows.ShowAlert(text, sender, 1);
    for (const HWND popup : Popups())
      if (std::ranges::find(before, popup) == before.end()) return popup;
    return nullptr;
  }

  HWND ShowHello() {
    core::gPopPos = 0;  // where it does not move
    return Show("hello");
  }

  static HWND Label(HWND popup, const std::string& text = "hello") { return ChildOf(popup, "Static", text + "\r\n"); }

  static void Press(HWND popup, const char* button) {
    ::SendMessageA(ChildOf(popup, "Button", button), BM_CLICK, 0, 0);
  }

  // Opens the menu with these keys queued for it.
  static void Choose(HWND popup, std::initializer_list<WPARAM> keys) {
    for (const WPARAM key : keys) ::PostMessageA(popup, WM_KEYDOWN, key, 0);
    Press(popup, "Options");
  }
};

TEST_F(PopupTest, TheLabelShowsTheTextUnchanged) {
  core::gPopPos = 0;
  std::string lines;
  while (lines.size() < 60000) lines += "line\r\n";
  for (const std::string& text : {"R&D && \"more\"\r\nand a line that is surely wider than the narrowest of popups"s,
                                  std::string(60000, 'W'), lines}) {
    const HWND popup = Show(text), label = Label(popup, text);
    ASSERT_NE(label, nullptr);
    const RECT inside = PlaceOf(label), whole = PlaceOf(popup);
    EXPECT_GT(inside.right - inside.left, Px(text == lines ? Twips{1000} : Twips{2000}));
    EXPECT_TRUE(inside.left >= whole.left && inside.right <= whole.right && inside.bottom <= whole.bottom);
    EXPECT_TRUE(whole.left >= 0 && whole.top >= 0 && whole.right <= ::GetSystemMetrics(SM_CXSCREEN) + 1 &&
                whole.bottom <= ::GetSystemMetrics(SM_CYSCREEN) + 1);
  }
  EXPECT_NE(ChildOf(Show("seen\0hidden"s), "Static", "seen"), nullptr);
}

COLORREF Background(HWND control) {
  ::UpdateWindow(control);
  const HDC dc = ::GetDC(control);
  const COLORREF colour = ::GetPixel(dc, 0, 0);
  ::ReleaseDC(control, dc);
  return colour;
}

TEST_F(PopupTest, FlashesThreeTimes) {
  const HWND popup = ShowHello(), label = Label(popup), picture = ChildrenOf(popup, "Static").at(0);
  core::RunPendingEvents();
  for (int tick = 0; tick <= 9; ++tick) {
    const bool lit = tick <= 6 && tick % 2 == 1;
    for (const HWND control : {label, picture})
      EXPECT_EQ(Background(control), ::GetSysColor(lit ? COLOR_HIGHLIGHTTEXT : COLOR_BTNFACE)) << tick;
    ::SendMessageA(popup, WM_TIMER, kTimer, 0);
  }
}

TEST_F(PopupTest, AppearsOnTopWithoutTheFocus) {
  windows.OpenComposer("bob|");
  core::RunPendingEvents();
  const HWND focus = ::GetFocus(), active = ::GetActiveWindow();
  ASSERT_NE(focus, nullptr);
  const HWND popup = Show("hello");
  core::RunPendingEvents();
  EXPECT_EQ(::GetFocus(), focus);
  EXPECT_EQ(::GetActiveWindow(), active);
  const LONG_PTR style = ::GetWindowLongPtrA(popup, GWL_EXSTYLE);
  EXPECT_NE(style & WS_EX_TOPMOST, 0);
  EXPECT_NE(style & WS_EX_TOOLWINDOW, 0) << "no button on the task bar";
  const toolkit::Area work = toolkit::WorkAreaPixels();
  for (const HWND window : {active, popup}) {  // the screen became smaller
    toolkit::SetArea(window, {5000, 5000, 5400, 5400});
    ::SendMessageA(window, WM_DISPLAYCHANGE, 32, 0);
    const toolkit::Area area = toolkit::AreaOf(window);
    EXPECT_EQ(area.right, work.right);
    EXPECT_LT(work.bottom - area.bottom, 5);
    EXPECT_LT(window == popup ? area.Width() : 0, 400) << "a popup fits its text again";
  }
  support::FilterKey(focus, WM_KEYDOWN, VK_F6);
  EXPECT_EQ(::GetActiveWindow(), popup) << "the user may activate it";
  support::FilterKey(::GetFocus(), WM_KEYDOWN, VK_F6);
  EXPECT_EQ(::GetFocus(), focus);
}

TEST_F(PopupTest, TheMenuBlocksRepliesAndStartsChats) {
  Choose(ShowHello(), {VK_UP, VK_RETURN});
  EXPECT_EQ(roster.BlockedNames(), Texts{"anna"});
  EXPECT_EQ(Popups().size(), 1u);
  Press(Popups()[0], "Close");

  Choose(ShowHello(), {VK_UP, VK_UP, VK_UP, VK_RIGHT, VK_RETURN});
  const HWND list = ChildrenOf(support::WindowsOf("frmCom").at(0), "SysListView32").at(0);
  EXPECT_EQ(support::RowTexts(list), Texts{"anna"});
  Choose(ShowHello(), {VK_UP, VK_UP, VK_UP, VK_RIGHT, VK_DOWN, VK_RETURN});
  EXPECT_EQ(support::RowTexts(list), Texts{"(All)"});

  static OpenWindows* open;
  open = &windows;
  const UINT_PTR timer = ::SetTimer(nullptr, 0, 1, [](HWND, UINT, UINT_PTR, DWORD) CALLBACK {
    for (const auto& chat : open->ChatWindows()) chat->RemoveUser("anna");
  });
  Choose(ShowHello(), {VK_UP, VK_UP, VK_RETURN});
  ::KillTimer(nullptr, timer);
  const HWND conversation = ChildrenOf(support::WindowsOf("frmChat").at(0), "RichEdit20A").at(0);
  EXPECT_EQ(support::TextOf(conversation), "anna:\thello\r\n") << "although its sender has left";
  EXPECT_TRUE(Popups().empty()) << "answered alerts have closed";
  const HWND nameless = Show("hello", "");
  Choose(nameless, {VK_UP, VK_UP, VK_UP, VK_RIGHT, VK_RETURN});
  EXPECT_TRUE(::IsWindowVisible(nameless)) << "nobody to reply to";
}

TEST_F(PopupTest, ExportsItsTextToTheClipboard) {
  const HWND popup = ShowHello();
  Choose(popup, {VK_DOWN, VK_DOWN, VK_RETURN});
  EXPECT_EQ(support::ClipboardText(), "hello\r\n");
  ::OpenClipboard(nullptr);
  EXPECT_EQ(support::ErrorOf([popup] { CopyText(popup, "held by another window"); }), 521);
  ::CloseClipboard();
  EXPECT_EQ(Popups().size(), 1u);
}

TEST_F(PopupTest, KeysOfItsButtons) {
  const HWND popup = ShowHello(), close = ChildOf(popup, "Button", "Close"), drop = ChildOf(popup, "Button", "Options");
  ::SetFocus(popup);
  EXPECT_EQ(::GetFocus(), drop) << "a stray blank must not close it";
  EXPECT_TRUE(support::FilterKey(drop, WM_KEYDOWN, VK_TAB));
  EXPECT_EQ(::GetFocus(), close);
  support::FilterKey(close, WM_KEYDOWN, VK_ESCAPE);
  core::RunPendingEvents();
  EXPECT_EQ(Popups().size(), 1u);
  EXPECT_TRUE(support::FilterKey(close, WM_KEYDOWN, VK_RETURN));
  EXPECT_TRUE(Popups().empty());
}

}  // namespace
}  // namespace conversation
