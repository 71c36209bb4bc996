// The Windows halves of the core: files, case table, registry, message loop and boxes.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "core/ansi_case.h"
#include "core/desktop.h"
#include "core/event_loop_win32.h"
#include "core/files.h"
#include "core/runtime_error.h"

namespace core {
namespace {

template <typename Action>
long ErrorOf(Action action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return error.number;
  }
  return 0;
}

class FilesWin32 : public testing::Test {
 protected:
  FilesWin32() {
    char temporary[MAX_PATH];
    ::GetTempPathA(MAX_PATH, temporary);
    folder_ = temporary + std::string("quillon") + std::to_string(::GetCurrentProcessId());
    ::CreateDirectoryA(folder_.c_str(), nullptr);
    file = Path("User.ini");
  }
  ~FilesWin32() override {
    ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    ::DeleteFileA(file.c_str());
    ::RemoveDirectoryA(Path("folder").c_str());
    EXPECT_TRUE(::RemoveDirectoryA(folder_.c_str())) << "something else was left in the folder";
  }
  std::string Path(const std::string& name) const { return folder_ + "\\" + name; }

  // Holds the file as another program would, sharing it in the given ways.
  HANDLE Hold(DWORD sharing) const {
    return ::CreateFileA(file.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
  }

  std::string file;

 private:
  std::string folder_;
};

TEST_F(FilesWin32, FailuresHaveTheirNumbers) {
  const std::string lost = Path("no\\where.txt"), folder = Path("folder");
  ::CreateDirectoryA(folder.c_str(), nullptr);
  EXPECT_EQ(ErrorOf([&] { ReadFile(file); }), 53);
  EXPECT_EQ(ErrorOf([&] { ReadFile(lost); }), 76);
  EXPECT_EQ(ErrorOf([&] { AppendToFile(lost, "x"); }), 76);
  EXPECT_EQ(ErrorOf([&] { WriteFileSafely(lost, "x"); }), 76);
  EXPECT_EQ(ErrorOf([&] { ReadFile(folder); }), 75);
  EXPECT_EQ(ErrorOf([&] { AppendToFile(folder, "x"); }), 75);
  EXPECT_EQ(ErrorOf([&] { WriteFileSafely(folder, "x"); }), 75);
  EXPECT_FALSE(FileExists(folder));
}

TEST_F(FilesWin32, AReadOnlyFileRefusesWriters) {
  WriteFileSafely(file, "old");
  ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(ErrorOf([&] { AppendToFile(file, "x"); }), 75);
  EXPECT_EQ(ErrorOf([&] { WriteFileSafely(file, "x"); }), 75);
  EXPECT_EQ(ReadFile(file), "old");
}

TEST_F(FilesWin32, AFileHeldByAnotherProgram) {
  WriteFileSafely(file, "a longer old text");
  HANDLE held = Hold(0);
  EXPECT_EQ(ErrorOf([&] { ReadFile(file); }), 70);
  EXPECT_EQ(ErrorOf([&] { AppendToFile(file, "x"); }), 70);
  EXPECT_EQ(ErrorOf([&] { WriteFileSafely(file, "x"); }), 70);
  ::CloseHandle(held);
  EXPECT_EQ(ReadFile(file), "a longer old text");

  // One who shares writing but not deleting, as most editors do, must not keep the settings from being saved.
  held = Hold(FILE_SHARE_READ | FILE_SHARE_WRITE);
  WriteFileSafely(file, "new");
  AppendToFile(file, "er");
  ::CloseHandle(held);
  EXPECT_EQ(ReadFile(file), "newer");
}

TEST(AnsiCase, FollowsTheCodePage) {
  if (::GetACP() != 1252) GTEST_SKIP() << "the table of code page 1252 is known, this system has another";
  const CaseTable& lower = LowerCaseTable();
  const auto expected = [](int i) {
    switch (i) {
      case 0x8A:
      case 0x8C:
      case 0x8E:
        return i + 16;
      case 0x9F:
        return 0xFF;
      default:
        return (i >= 'A' && i <= 'Z') || (i >= 0xC0 && i <= 0xDE && i != 0xD7) ? i + 32 : i;
    }
  };
  for (int i = 0; i < 256; ++i) {
    EXPECT_EQ(lower[static_cast<std::size_t>(i)], static_cast<char>(expected(i))) << i;
  }
}

struct RunValue {
  LSTATUS result;
  DWORD type = 0, size = 64;
  char text[64] = "";
};

RunValue ReadRunValue() {
  RunValue value;
  HKEY key = nullptr;
  ::RegOpenKeyExA(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\Run", 0, KEY_READ, &key);
  value.result =
      ::RegQueryValueExA(key, "Quillon", nullptr, &value.type, reinterpret_cast<BYTE*>(value.text), &value.size);
  ::RegCloseKey(key);
  return value;
}

TEST(RunValue, IsWrittenAsPlainTextAndTakenAway) {
  WriteRunValue("C:\\Q\\Quillon");
  const RunValue value = ReadRunValue();
  EXPECT_EQ(value.result, ERROR_SUCCESS);
  EXPECT_EQ(value.type, static_cast<DWORD>(REG_SZ));
  EXPECT_STREQ(value.text, "C:\\Q\\Quillon");
  EXPECT_TRUE(value.size == 12 || value.size == 13) << value.size;  // the system may add the zero behind the text
  DeleteRunValue();
  DeleteRunValue();  // silent when there is nothing to delete
  EXPECT_EQ(ReadRunValue().result, ERROR_FILE_NOT_FOUND);
}

TEST(DesktopWin32, KnowsUserClockAndProgram) {
  EXPECT_FALSE(LogonName().empty());
  EXPECT_EQ(ProgramFileTitle(), "windows_tests");
  EXPECT_TRUE(FileExists(InProgramDirectory("windows_tests.exe")));
  const std::string clock = ClockText(), time = TimeText();
  EXPECT_GT(clock.find(' '), 5u);                                             // a date, and a blank behind it
  EXPECT_EQ(clock.substr(clock.find(' ') + 1).size(), time.size()) << clock;  // the second may change in between
  EXPECT_FALSE(AnotherCopyRuns());
  EXPECT_TRUE(AnotherCopyRuns());
}

TEST(DesktopWin32, AlertSoundsNeedNoFile) {
  const HMODULE before = ::GetModuleHandleA("winmm.dll");
  PlayAlertSound("(S)");
  PlayAlertSound("(B)");
  EXPECT_EQ(::GetModuleHandleA("winmm.dll"), before);  // not loaded for a beep
  PlayAlertSound("missing.wav");
  EXPECT_NE(::GetModuleHandleA("winmm.dll"), nullptr);
}

constexpr UINT kAgain = WM_APP + 1;

LRESULT CALLBACK Restless(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == kAgain) ::PostMessageA(window, kAgain, 0, 0);
  return ::DefWindowProcA(window, message, wParam, lParam);
}

class EventLoop : public testing::Test {
 protected:
  EventLoop() {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = Restless;
    windowClass.lpszClassName = "Restless";
    ::RegisterClassA(&windowClass);
    window = ::CreateWindowExA(0, "Restless", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  }
  ~EventLoop() override {
    SetMessageFilter(nullptr);
    ::DestroyWindow(window);
  }
  HWND window;
};

TEST_F(EventLoop, PendingEventsEndEvenWhenTheyBreedNewOnes) {
  ::PostMessageA(window, kAgain, 0, 0);
  const DWORD start = ::GetTickCount();
  RunPendingEvents();
  const DWORD elapsed = ::GetTickCount() - start;
  EXPECT_GE(elapsed, 45u);
  EXPECT_LT(elapsed, 500u);
}

TEST_F(EventLoop, PendingEventsLeaveTheEndToTheLoop) {
  ::PostQuitMessage(7);
  RunPendingEvents();
  RunPendingEvents();
  EXPECT_EQ(RunMessageLoop(), 7);
}

TEST_F(EventLoop, TheFilterSeesMessagesFirst) {
  SetMessageFilter([](MSG& message) { return message.message == kAgain; });
  ::PostMessageA(window, kAgain, 0, 0);
  const DWORD start = ::GetTickCount();
  RunPendingEvents();
  EXPECT_LT(::GetTickCount() - start, 45u);  // taken, so it bred no other
}

TEST_F(EventLoop, WaitingEndsWithTheFirstEvent) {
  RunPendingEvents();
  DWORD start = ::GetTickCount();
  WaitForEvent(100);
  EXPECT_GE(::GetTickCount() - start, 80u);
  ::PostMessageA(window, WM_NULL, 0, 0);
  MSG message;
  ::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);  // seen, but left where it is
  start = ::GetTickCount();
  WaitForEvent(5000);
  EXPECT_LT(::GetTickCount() - start, 1000u);
}

struct BoxesSeen {
  std::vector<std::string> titles;
  std::size_t mostAtOnce = 0;
} gSeen;

BOOL CALLBACK AddTitle(HWND window, LPARAM titles) {
  char className[16], title[32];
  ::GetClassNameA(window, className, sizeof className);
  ::GetWindowTextA(window, title, sizeof title);
  const bool isBox = ::IsWindowVisible(window) && std::string(className) == "#32770";
  if (isBox) reinterpret_cast<std::vector<std::string>*>(titles)->push_back(title);
  return TRUE;
}

// Runs inside the loops of the boxes too: notes what is on the screen, and closes it.
void CALLBACK CloseBoxes(HWND, UINT, UINT_PTR timer, DWORD) {
  std::vector<std::string> titles;
  ::EnumThreadWindows(::GetCurrentThreadId(), AddTitle, reinterpret_cast<LPARAM>(&titles));
  gSeen.mostAtOnce = std::max(gSeen.mostAtOnce, titles.size());
  if (titles.empty()) {
    ::KillTimer(nullptr, timer);
    ::PostQuitMessage(0);
    return;
  }
  if (gSeen.titles.empty()) PostBox({.text = "late", .title = "third"});
  gSeen.titles.push_back(titles.front());
  ::PostMessageA(::FindWindowA("#32770", titles.front().c_str()), WM_COMMAND, IDOK, 0);
}

TEST_F(EventLoop, PostedBoxesComeOneAtATime) {
  PostBox({.text = "1", .title = "first", .icon = BoxIcon::Information});
  PostBox({.text = "2", .title = "second"});
  ::SetTimer(nullptr, 0, 200, CloseBoxes);
  RunMessageLoop();
  EXPECT_EQ(gSeen.titles, (std::vector<std::string>{"first", "second", "third"}));
  EXPECT_EQ(gSeen.mostAtOnce, 1u);
}

}  // namespace
}  // namespace core
