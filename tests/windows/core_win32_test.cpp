// The Windows parts of the core: files, registry, message loop and message boxes.
#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <string>

#include "core/event_loop.h"
#include "core/event_loop_win32.h"
#include "core/files.h"
#include "core/globals.h"
#include "core/process.h"
#include "core/message_box.h"
#include "core/runtime_error.h"
#include "support/temporary_folder.h"
#include "tests/support/error_of.h"
#include "tests/windows/box_answers.h"

namespace core {
namespace {

using support::ErrorOf;

class FilesWin32 : public testing::Test {
 protected:
  // The errors of reading, appending and writing.
  using Errors = std::array<long, 3>;
  static Errors ErrorsOf(const std::string& name) {
    return {ErrorOf([&] { ReadFile(name); }), ErrorOf([&] { AppendToFile(name, "x"); }),
            ErrorOf([&] { WriteFileSafely(name, "x"); })};
  }

  support::TemporaryFolder folder;
  const std::string file = folder.Path("User.ini");
};

TEST_F(FilesWin32, FailuresHaveTheRightNumbers) {
  const std::string inner = folder.Path("folder");
  folder.PutFolder("folder");
  EXPECT_FALSE(FileExists(inner));
  EXPECT_EQ(ErrorOf([&] { ReadFile(file); }), 53);
  EXPECT_EQ(ErrorsOf(folder.Path("no\\where.txt")), (Errors{76, 76, 76}));
  EXPECT_EQ(ErrorsOf(inner), (Errors{75, 75, 75}));
  WriteFileSafely(file, "a longer old text");
  ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(ErrorsOf(file), (Errors{0, 75, 75}));
  ::SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL);
  const auto hold = [this](DWORD sharing) {
    return ::CreateFileA(file.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
  };
  HANDLE held = hold(0);
  EXPECT_EQ(ErrorsOf(file), (Errors{70, 70, 70}));
  ::CloseHandle(held);
  EXPECT_EQ(ReadFile(file), "a longer old text");
  // A program that shares the file for writing but not for deletion, like most editors, must not keep settings from
  // being saved.
  held = hold(FILE_SHARE_READ | FILE_SHARE_WRITE);
  WriteFileSafely(file, "new");
  ::CloseHandle(held);
  EXPECT_EQ(ReadFile(file), "new");
}

TEST_F(FilesWin32, KeepsEveryByteUnlessTheFileIsHuge) {
  WriteFileSafely(file, "a longer text than the new one");
  WriteFileSafely(file, "new");
  AppendToFile(file, std::string("\0b", 2));
  EXPECT_EQ(ReadFile(file), std::string("new\0b", 5));
  EXPECT_EQ(folder.Count(), 1) << "no temporary file is left";
  WriteFileSafely(file, std::string(kMaxFileSize + 1, 'x'));
  EXPECT_EQ(ReadFile(file).size(), kMaxFileSize);
}

TEST_F(FilesWin32, OldTemporaryFilesAreDeletedAndNothingElse) {
  const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(2);
  for (const char* name :
       {"Qui1.tmp", "quiA0F9.TMP", "Qui12345.tmp", "Quiz.tmp", "Qui.tmp", "Qui1A.txt", "xQui1.tmp"}) {
    folder.Put(name, "x");
    std::filesystem::last_write_time(folder.Path(name), longAgo);
  }
  folder.Put("Qui2.tmp", "another copy writes this now");
  folder.PutFolder("Qui3.tmp");
  RemoveLeftovers(folder.Path());
  EXPECT_EQ(folder.Count(), 7);
  EXPECT_TRUE(folder.Get("Qui1.tmp").empty() && folder.Get("quiA0F9.TMP").empty());
}

TEST(RunValue, IsWrittenAsPlainTextAndRemoved) {
  const auto read = [] {
    char text[64] = "";
    DWORD size = sizeof text;
    ::RegGetValueA(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\Run", "Quillon", RRF_RT_REG_SZ,
                   nullptr, text, &size);
    return std::string(text);
  };
  WriteRunValue("C:\\Q\\Quillon");
  EXPECT_EQ(read(), "C:\\Q\\Quillon");
  for (int i = 0; i < 2; ++i) DeleteRunValue();  // silent when there is nothing to delete
  EXPECT_EQ(read(), "");
}

TEST(Boxes, AreTruncatedOnlyIfTheirButtonWouldBeOffTheScreen) {
  const auto shown = [](const std::string& text, const char* closing) {
    const support::BoxAnswers answering;
    ShowBox({.text = text, .closing = closing, .icon = BoxIcon::Critical});
    return answering.Texts().back();
  };
  std::string words, rows;
  for (int i = 0; i < 10000; ++i) words += "words ", rows += "row\r\n";
  for (const std::string& text : {words, rows, std::string(60000, 'W')}) {
    for (const char* closing : {"", "\r\n\r\nThe end"}) {
      const std::string cut = shown(text, closing), mark = std::string("...") + closing;
      ASSERT_TRUE(cut.ends_with(mark));
      const std::string kept = cut.substr(0, cut.size() - mark.size());
      EXPECT_EQ(kept, text.substr(0, kept.size()));
      EXPECT_GT(kept.size(), 50u);
      EXPECT_EQ(shown(kept, closing), kept + closing);
    }
  }
  const std::string link = "See https://vextant.example/" + std::string(100, 'x');
  EXPECT_EQ(shown(link, ""), link);
}

TEST(Boxes, AreRetriedUntilAWindowCanBeCreated) {
  const auto refuse = [](int code, WPARAM, LPARAM) CALLBACK -> LRESULT { return code == HCBT_CREATEWND; };
  const HHOOK hook = ::SetWindowsHookExA(WH_CBT, refuse, nullptr, ::GetCurrentThreadId());
  ShowBox({.text = "first"});
  PostBox({.text = "second"});
  ShowPostedBoxes();
  ::UnhookWindowsHookEx(hook);
  const support::BoxAnswers answers;
  for (; answers.Texts().size() < 2; RunPendingEvents()) ShowPostedBoxes();
  EXPECT_EQ(answers.Texts(), (std::vector<std::string>{"first", "second"}));
}

// A posted command may open something modal, which would block all further packets.
TEST(EventLoop, DuringADispatchCommandsWaitAndTimersRun) {
  static int ticks, commands;
  ticks = commands = 0;
  SetMessageFilter([](MSG& message) { return message.message == WM_COMMAND && ++commands; });
  const UINT_PTR timer = ::SetTimer(nullptr, 0, 1, [](HWND, UINT, UINT_PTR, DWORD) CALLBACK { ++ticks; });
  ::PostThreadMessageA(::GetCurrentThreadId(), WM_COMMAND, 1, 0);
  ::Sleep(30);
  gDispatching = true;
  RunPendingEvents();
  EXPECT_GT(ticks, 0);
  EXPECT_EQ(commands, 0);
  gDispatching = false;
  RunPendingEvents();
  EXPECT_EQ(commands, 1);
  ::KillTimer(nullptr, timer);
  SetMessageFilter(nullptr);
}

}  // namespace
}  // namespace core
