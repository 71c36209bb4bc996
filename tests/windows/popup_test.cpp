// Alert popups as real windows. Their timers are played by hand, so that nothing depends on the speed of the machine.
#include <algorithm>
#include <thread>

#include "core/runtime_error.h"
#include "tests/windows/conversation_fixture.h"
#include "tests/windows/object_count.h"
#include "ui/conversation/clipboard.h"
#include "ui/toolkit/screen.h"

namespace conversation {
namespace {

using support::ChildrenOf;
using support::PlaceOf;
using toolkit::Px;
using toolkit::Tw;
using Texts = std::vector<std::string>;

constexpr WPARAM kAniTimer = 1, kTimer = 2;

std::vector<HWND> Popups() { return support::WindowsOf("frmPop"); }

HWND Child(HWND popup, const char* className, const std::string& text) {
  for (const HWND child : ChildrenOf(popup, className))
    if (support::TextOf(child) == text) return child;
  return nullptr;
}

int Width(const RECT& place) { return static_cast<int>(place.right - place.left); }
int Height(const RECT& place) { return static_cast<int>(place.bottom - place.top); }

class PopupTest : public ConversationTest {
 protected:
  HWND Show(const std::string& text, const char* sender = "anna", int kind = 1) {
    const auto before = Popups();
    windows.ShowAlert(text, sender, kind);
    for (const HWND popup : Popups())
      if (std::ranges::find(before, popup) == before.end()) return popup;
    return nullptr;
  }

  HWND ShowAt(std::int16_t position, std::int16_t alertHeight) {
    core::gPopPos = position;
    core::gAlertHeight = alertHeight;
    return Show("hello");
  }

  static HWND Label(HWND popup, const std::string& text = "hello") { return Child(popup, "Static", text + "\r\n"); }

  static void Tick(HWND popup, WPARAM timer) { ::SendMessageA(popup, WM_TIMER, timer, 0); }

  // Plays the animation until the popup stays where it is; its place then.
  static RECT Slide(HWND popup) {
    for (int still = 0, ticks = 0; still < 5 && ticks < 2000; ++ticks) {
      const RECT before = PlaceOf(popup);
      Tick(popup, kAniTimer);
      still = PlaceOf(popup).top == before.top ? still + 1 : 0;
    }
    return PlaceOf(popup);
  }

  static void Press(HWND popup, const char* button) { ::SendMessageA(Child(popup, "Button", button), BM_CLICK, 0, 0); }

  // Opens the menu with these keys waiting for it.
  static void Choose(HWND popup, std::initializer_list<WPARAM> keys) {
    for (const WPARAM key : keys) ::PostMessageA(popup, WM_KEYDOWN, key, 0);
    Press(popup, "Options");
  }

  const int screenWidth = ::GetSystemMetrics(SM_CXSCREEN), screenHeight = ::GetSystemMetrics(SM_CYSCREEN);
};

TEST_F(PopupTest, SizeFollowsTextAndPicture) {
  const std::string lines = "one line that is surely wider than the narrowest of popups\r\nand another";
  for (const std::string& text : {std::string("x"), lines}) {
    const HWND popup = Show(text), label = Label(popup, text);
    ASSERT_NE(label, nullptr);
    const RECT window = PlaceOf(popup), label_ = PlaceOf(label);
    const RECT picture = PlaceOf(ChildrenOf(popup, "Static").at(0));
    EXPECT_NEAR(Width(window), std::max(Width(label_) + Px(Twips{100}), Px(Twips{2000})), 1) << text;
    EXPECT_NEAR(Height(window), Height(label_) + Height(picture) + Px(Twips{300}), 1) << text;
  }
  EXPECT_EQ(Width(PlaceOf(Popups().back())), Px(Twips{2000})) << "one letter";
}

TEST_F(PopupTest, TheLabelHoldsTheTextAsItCame) {
  EXPECT_NE(Label(Show("R&D && \"more\""), "R&D && \"more\""), nullptr);
  EXPECT_NE(Child(Show(std::string("seen\0hidden", 11)), "Static", "seen"), nullptr);
  const HWND popup = Show("x");
  EXPECT_EQ(support::TextOf(popup), "Quillon");
}

TEST_F(PopupTest, TheLongestAlertStaysOnTheScreen) {
  core::gPopPos = 4;
  std::string lines;
  while (lines.size() < 60000) lines += "line\r\n";
  for (const std::string& text : {std::string(60000, 'W'), lines}) {
    const HWND popup = Show(text);
    ASSERT_NE(Label(popup, text), nullptr);
    const RECT place = Slide(popup);
    EXPECT_GE(place.left, 0);
    EXPECT_GE(place.top, -1);
    EXPECT_LE(place.right, screenWidth + 1);
    EXPECT_LE(place.bottom, screenHeight + 1);
  }
}

struct Course {
  std::int16_t position;
  bool right, bottom;
};

TEST_F(PopupTest, SlidesInFromItsCornerAndRestsAtTheAlertHeight) {
  for (const Course& course : {Course{1, false, false}, {2, true, false}, {3, false, true}, {4, true, true}}) {
    for (const std::int16_t alertHeight : {std::int16_t{0}, std::int16_t{2}}) {
      const HWND popup = ShowAt(course.position, alertHeight);
      const RECT start = PlaceOf(popup), rest = Slide(popup);
      const int edge = Px(Twips{450 * alertHeight}), step = Px(Twips{50}) + 1;
      EXPECT_NEAR(course.right ? start.right - screenWidth : start.left, 0, 1) << course.position;
      EXPECT_EQ(rest.left, start.left);
      EXPECT_NEAR(course.bottom ? start.top - screenHeight : start.bottom, 0, 1) << course.position;
      const int reached = static_cast<int>(course.bottom ? screenHeight - rest.bottom : rest.top);
      EXPECT_GE(reached, edge - 1) << course.position << " at " << alertHeight;
      EXPECT_LE(reached, edge + step) << course.position << " at " << alertHeight;
    }
  }
}

TEST_F(PopupTest, OtherPositionsDoNotMove) {
  for (const std::int16_t position : {std::int16_t{0}, std::int16_t{5}}) {
    const HWND popup = ShowAt(position, 2);
    const RECT start = PlaceOf(popup), rest = Slide(popup);
    EXPECT_EQ(start.top, rest.top);
    EXPECT_GE(start.left, 0);
    EXPECT_LE(start.right, screenWidth);
    EXPECT_TRUE(::IsWindowVisible(popup));
  }
}

// A setting that changes while a popup slides, as when the options are applied, must not send it off the screen.
TEST_F(PopupTest, KeepsTheCourseItBeganWith) {
  const HWND popup = ShowAt(1, 2);
  Tick(popup, kAniTimer);
  core::gPopPos = 3;
  core::gAlertHeight = 0;
  EXPECT_NEAR(Slide(popup).top, Px(Twips{900}), Px(Twips{50}) + 1);
}

COLORREF Background(HWND control) {
  ::UpdateWindow(control);
  const HDC dc = ::GetDC(control);
  const COLORREF colour = ::GetPixel(dc, 0, 0);
  ::ReleaseDC(control, dc);
  return colour;
}

TEST_F(PopupTest, FlashesSixTimes) {
  const HWND popup = ShowAt(0, 0), label = Label(popup), picture = ChildrenOf(popup, "Static").at(0);
  const COLORREF face = ::GetSysColor(COLOR_BTNFACE), lit = ::GetSysColor(COLOR_HIGHLIGHTTEXT);
  core::RunPendingEvents();
  EXPECT_EQ(Background(label), face);
  for (int tick = 1; tick <= 9; ++tick) {
    Tick(popup, kTimer);
    const COLORREF expected = tick <= 6 && tick % 2 == 1 ? lit : face;
    EXPECT_EQ(Background(label), expected) << tick;
    EXPECT_EQ(Background(picture), expected) << tick;
  }
}

TEST_F(PopupTest, ComesToTheTopWithoutTheKeyboard) {
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
}

TEST_F(PopupTest, AtMost31AreOpenAndTheOthersWaitTheirTurn) {
  for (int i = 1; i <= 34; ++i) windows.ShowAlert("alert " + std::to_string(i), "anna", 1);
  EXPECT_EQ(Popups().size(), 31u);
  const auto shows = [](const std::string& text) {
    return std::ranges::any_of(Popups(), [&](HWND popup) { return Label(popup, text) != nullptr; });
  };
  EXPECT_TRUE(shows("alert 31"));
  EXPECT_FALSE(shows("alert 32"));
  for (int i = 32; i <= 34; ++i) {
    Press(Popups().front(), "Close");
    EXPECT_EQ(Popups().size(), 31u);
    EXPECT_TRUE(shows("alert " + std::to_string(i)));
  }
  while (!Popups().empty()) Press(Popups().front(), "Close");
  EXPECT_NE(Show("next"), nullptr);
}

TEST_F(PopupTest, BlockingTheSenderLeavesItOpen) {
  const HWND popup = ShowAt(0, 0);
  Choose(popup, {VK_UP, VK_RETURN});
  EXPECT_EQ(roster.blocked, Texts{"anna"});
  EXPECT_EQ(Popups().size(), 1u);
}

TEST_F(PopupTest, RepliesGoToTheSenderOrToAll) {
  Choose(ShowAt(0, 0), {VK_UP, VK_UP, VK_UP, VK_RIGHT, VK_RETURN});
  ASSERT_EQ(support::WindowsOf("frmCom").size(), 1u);
  const HWND list = ChildrenOf(support::WindowsOf("frmCom")[0], "SysListView32").at(0);
  EXPECT_EQ(support::RowTexts(list), Texts{"anna"});
  EXPECT_TRUE(Popups().empty());
  Choose(ShowAt(0, 0), {VK_UP, VK_UP, VK_UP, VK_RIGHT, VK_DOWN, VK_RETURN});
  EXPECT_EQ(support::RowTexts(list), Texts{"(All)"});
  EXPECT_TRUE(Popups().empty());
}

std::string ClipboardText() {
  ::OpenClipboard(nullptr);
  const HANDLE data = ::GetClipboardData(CF_TEXT);
  const std::string text = data ? static_cast<const char*>(::GlobalLock(data)) : "(none)";
  if (data) ::GlobalUnlock(data);
  ::CloseClipboard();
  return text;
}

TEST_F(PopupTest, ExportsItsTextToTheClipboard) {
  const HWND popup = ShowAt(0, 0);
  Choose(popup, {VK_DOWN, VK_DOWN, VK_RETURN});
  EXPECT_EQ(ClipboardText(), "hello\r\n");
  EXPECT_EQ(Popups().size(), 1u);
}

std::string AlertFile() { return core::InProgramDirectory("alert.txt"); }

// Answers the dialog, which runs a message loop of its own.
void CALLBACK SaveAsAlertFile(HWND, UINT, UINT_PTR timer, DWORD) {
  const auto dialogs = support::WindowsOf("frmSave");
  if (dialogs.empty()) return;
  ::KillTimer(nullptr, timer);
  EXPECT_EQ(support::TextOf(dialogs[0]), "Export Alert");
  ::SetWindowTextA(ChildrenOf(dialogs[0], "Edit").at(0), AlertFile().c_str());
  ::PostMessageA(Child(dialogs[0], "Button", "&Save"), BM_CLICK, 0, 0);
}

TEST_F(PopupTest, ExportsItsTextToAFile) {
  ::SetTimer(nullptr, 0, 20, SaveAsAlertFile);
  Choose(ShowAt(0, 0), {VK_DOWN, VK_RETURN});
  EXPECT_EQ(core::ReadFile(AlertFile()), "hello\r\n");
  ::DeleteFileA(AlertFile().c_str());
  EXPECT_EQ(Popups().size(), 1u);
}

TEST_F(PopupTest, AClipboardHeldByAnotherProgramIsAnError) {
  const HWND popup = ShowAt(0, 0);
  const HANDLE opened = ::CreateEventA(nullptr, TRUE, FALSE, nullptr),
               done = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
  std::thread other([=] {
    ::OpenClipboard(nullptr);
    ::SetEvent(opened);
    ::WaitForSingleObject(done, INFINITE);
    ::CloseClipboard();
  });
  ::WaitForSingleObject(opened, INFINITE);
  long number = 0;
  try {
    CopyText(popup, "text");
  } catch (const core::RuntimeError& error) {
    number = error.number;
  }
  ::SetEvent(done);
  other.join();
  EXPECT_EQ(number, 521);
}

TEST_F(PopupTest, LeavesNothingBehindWhenItCloses) {
  const auto once = [this] {
    const HWND popup = ShowAt(0, 0);
    Choose(popup, {VK_ESCAPE});
    Press(popup, "Close");
  };
  once();
  const toolkit::ObjectCount before = toolkit::CountObjects();
  for (int i = 0; i < 50; ++i) once();
  const toolkit::ObjectCount after = toolkit::CountObjects();
  EXPECT_LT(after.gdi, before.gdi + 25);
  EXPECT_LT(after.user, before.user + 25);
}

TEST_F(PopupTest, KeysOfItsButtons) {
  const HWND popup = ShowAt(0, 0), close = Child(popup, "Button", "Close"), drop = Child(popup, "Button", "Options");
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
