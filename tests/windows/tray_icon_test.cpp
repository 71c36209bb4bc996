// The notification icon and the opening of links, with a fake shell.
#include <windows.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "core/event_loop.h"
#include "core/globals.h"
#include "tests/windows/box_answers.h"
#include "ui/toolkit/screen.h"
#include "ui/toolkit/tray_icon.h"
#include "ui/toolkit/links.h"
#include "ui/toolkit/window.h"

namespace toolkit {
namespace {

struct ShellCall {
  DWORD message;
  NOTIFYICONDATAA record;
};
std::vector<ShellCall> shellCalls;
int refusals = 0;  // how many further calls the shell refuses

BOOL WINAPI RecordShell(DWORD message, NOTIFYICONDATAA* record) {
  ShellCall call{message, {}};
  std::memcpy(&call.record, record, record->cbSize);
  shellCalls.push_back(call);
  return --refusals < 0;
}

class TrayIconTest : public testing::Test {
 protected:
  TrayIconTest() {
    shellCalls.clear();
    refusals = 0;
    icon.MouseDown = [this](MouseButton button) { Note("down", button); };
    icon.MouseUp = [this](MouseButton button) { Note("up", button); };
    icon.MouseDblClk = [this](MouseButton button) { Note("double", button); };
    icon.ShowParent = [this] { events += "parent "; };
    icon.ShowPopUpMenu = [this] { events += "menu "; };
    icon.Refused = [this] { events += "refused "; };
  }
  void Note(const char* event, MouseButton button) { events += event + std::to_string(static_cast<int>(button)) + " "; }

  // A message as the shell posts it; y is arbitrary.
  void Mouse(int message) { ::SendMessageA(Window(), WM_MOUSEMOVE, 1, MAKELPARAM(message, 77)); }

  HWND Window() {
    if (shellCalls.empty()) icon.Create();
    return shellCalls.back().record.hWnd;
  }

  std::string events;
  TrayIcon icon{RecordShell};
};

TEST_F(TrayIconTest, PassesPictureAndTextToTheShell) {
  const auto copy = [] { return Icon(::CopyIcon(::LoadIconA(nullptr, IDI_APPLICATION))); };
  icon.SetToolTipText("Quillon");
  icon.SetPicture(copy());
  EXPECT_TRUE(shellCalls.empty()) << "inactive: only the record changes";
  const HICON first = icon.Picture();
  icon.Create();
  EXPECT_EQ(shellCalls[0].record.cbSize, sizeof(void*) == 4 ? 88u : DWORD{NOTIFYICONDATAA_V1_SIZE});
  EXPECT_STREQ(shellCalls[0].record.szTip, "Quillon");
  EXPECT_EQ(shellCalls[0].record.hIcon, first);
  icon.SetPicture(copy());
  EXPECT_EQ(shellCalls[1].record.hIcon, icon.Picture());
  ICONINFO info{};
  EXPECT_FALSE(::GetIconInfo(first, &info)) << "destroyed once the shell has the next one";
  icon.SetToolTipText(std::string(200, 'x'));
  EXPECT_EQ(shellCalls[2].record.szTip, std::string(63, 'x')) << "cut to the size of the record";
  { TrayIcon(RecordShell).Create(); }
  EXPECT_EQ(shellCalls.back().message, DWORD{NIM_DELETE}) << "the destructor removes the icon";
}

// At logon, when the shell is busy: each attempt is an add followed by a modify, in case the add succeeded after all.
TEST_F(TrayIconTest, RetriesWhileTheShellIsBusy) {
  const auto retry = [this](int times) {
    const std::size_t before = shellCalls.size();
    for (int i = 0; i < times; ++i) ::SendMessageA(Window(), WM_TIMER, 1, 0);
    return shellCalls.size() - before;
  };
  refusals = 2 + 2 * 29;
  icon.Create();
  EXPECT_TRUE(icon.Active());
  EXPECT_EQ(retry(29), 58u);
  EXPECT_EQ(retry(1), 1u) << "accepted at last";
  EXPECT_EQ(events, "");
  refusals = 3 + 2 * TrayIcon::kRetries;  // the removal of the former one too
  const HWND window = Window();
  icon.Create();
  retry(TrayIcon::kRetries);
  EXPECT_EQ(events, "refused ");
  EXPECT_TRUE(icon.IsRefused());
  ::SendMessageA(window, ::RegisterWindowMessageA("TaskbarCreated"), 0, 0);
  EXPECT_EQ(shellCalls.back().message, DWORD{NIM_ADD});
  EXPECT_FALSE(icon.IsRefused());
}

TEST_F(TrayIconTest, MouseMessagesBecomeEvents) {
  const HWND window = Window();
  for (const int message : {0x204, 0x205, 0x209, 0x203, 0x200, 0x20A, 0, 0xFFFF, 0x201, 0x202, 0x206, 0x207, 0x208})
    Mouse(message);
  EXPECT_EQ(events, "down2 up2 menu double4 double1 parent down1 up1 double2 down4 up4 ");
  events.clear();
  icon.ShowPopUpMenu = [this] { Mouse(0x203); };
  icon.MouseDblClk = [](MouseButton) { throw std::runtime_error("no"); };
  for (const int message : {0x205, 0x203, 0x201}) Mouse(message);
  EXPECT_EQ(events, "up2 parent down1 ") << "handlers run one at a time, and may fail";
  icon.Destroy();
  ::SendMessageA(window, WM_MOUSEMOVE, 1, 0x201);
  EXPECT_EQ(events, "up2 parent down1 ") << "only while active";
}

// The shell sends its messages rather than posting them, so a menu could open during a dispatch.
TEST_F(TrayIconTest, WaitsForTheEndOfADispatch) {
  core::gDispatching = true;
  std::atomic<bool> sent = false;
  std::thread shell([&, window = Window()] {
    ::SendMessageA(window, WM_MOUSEMOVE, 1, 0x201);
    sent = true;
  });
  while (!sent) core::RunPendingEvents();
  shell.join();
  EXPECT_EQ(events, "");
  core::gDispatching = false;
  core::RunPendingEvents();
  EXPECT_EQ(events, "down1 ");
}

std::vector<std::string> openedWith;
INT_PTR shellResult = 0;

HINSTANCE WINAPI RecordOpen(HWND owner, const char* verb, const char* file, const char* parameters,
                            const char* directory, int show) {
  openedWith = {owner ? "owner" : "", verb, file, parameters, directory, std::to_string(show)};
  return reinterpret_cast<HINSTANCE>(shellResult);
}

TEST(OpenLink, ReportsResultZeroOnly) {
  const support::BoxAnswers answering;
  for (const INT_PTR result : {1, 2, 31, 33, 0}) {
    shellResult = result;
    OpenLink("https://vextant.example/", RecordOpen);
  }
  EXPECT_EQ(openedWith, (std::vector<std::string>{"", "open", "https://vextant.example/", "", "1", "1"}));
  EXPECT_EQ(answering.Texts(), std::vector<std::string>{"Error Opening Link to https://vextant.example/\r\n\r\n0"});
}

}  // namespace
}  // namespace toolkit
