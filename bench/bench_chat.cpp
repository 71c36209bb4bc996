// Measures the cost of chat windows and popups, compared with a bare rich edit control where there is an equivalent.
// Prints a table; takes no arguments. Exit status 1 when a limit is exceeded.
#include <windows.h>
#include <commctrl.h>
#include <psapi.h>
#include <richedit.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/event_loop.h"
#include "core/files.h"
#include "core/globals.h"
#include "support/recording_network.h"
#include "support/window_probe.h"
#include "ui/conversation/chat_export.h"
#include "ui/conversation/open_windows.h"
#include "ui/main/user_roster.h"
#include "ui/toolkit/window.h"

namespace {

constexpr char kLine[] = "An ordinary line of a conversation as people write it, eighty bytes of text with it.";
constexpr int kLines[] = {0, 10000, 50000};
constexpr int kMeasured = 1000;
constexpr int kChats = 20, kLinesOfChat = 1000, kExported = 100000, kUsers = 5000;
constexpr int kWindows = 30;
constexpr ULONGLONG kTimeout = 60000;  // milliseconds

double Seconds(FILETIME time) {
  const ULARGE_INTEGER units{{time.dwLowDateTime, time.dwHighDateTime}};
  return static_cast<double>(units.QuadPart) / 1e7;
}

// Processor time of this process, so that other programs on the machine do not count.
double ProcessorSeconds() {
  FILETIME created{}, ended{}, kernel{}, user{};
  ::GetProcessTimes(::GetCurrentProcess(), &created, &ended, &kernel, &user);
  return Seconds(kernel) + Seconds(user);
}

double Microseconds(const std::function<void()>& action) {
  const double start = ProcessorSeconds();
  action();
  return 1e6 * (ProcessorSeconds() - start);
}

double Milliseconds(const std::function<void()>& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double Kilobytes() {
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof memory;
  ::GetProcessMemoryInfo(::GetCurrentProcess(), &memory, sizeof memory);
  return static_cast<double>(memory.PagefileUsage) / 1024;
}

// The baseline: the minimal calls that append a coloured, indented line to a rich edit control.
class BareControl {
 public:
  // In a window of its own, because a visible control slows down its siblings.
  BareControl()
      : parent_(::CreateWindowExA(0, "STATIC", "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 500, 100, 350, 300, nullptr,
                                  nullptr, nullptr, nullptr)),
        box_(::CreateWindowExA(0, "RichEdit20A", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_READONLY, 0,
                               0, 300, 200, parent_, nullptr, nullptr, nullptr)) {
    ::SendMessageA(box_, EM_EXLIMITTEXT, 0, 1 << 28);
  }
  ~BareControl() { ::DestroyWindow(parent_); }
  BareControl(const BareControl&) = delete;
  BareControl& operator=(const BareControl&) = delete;

  // Without formatting, which takes most of the time.
  void Fill(int lines) const {
    std::string text;
    for (int i = 0; i < 100; ++i) text += std::string("anna:\t") + kLine + "\r\n";
    for (int i = 0; i < lines; i += 100)
      ::SendMessageA(box_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
  }

  void Append() const {
    ::SendMessageA(box_, WM_SETREDRAW, FALSE, 0);
    CHARRANGE end{-1, -1};
    ::SendMessageA(box_, EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&end));
    CHARFORMATA colour{};
    colour.cbSize = sizeof colour;
    colour.dwMask = CFM_COLOR;
    ::SendMessageA(box_, EM_SETCHARFORMAT, SCF_SELECTION, reinterpret_cast<LPARAM>(&colour));
    PARAFORMAT indent{};
    indent.cbSize = sizeof indent;
    indent.dwMask = PFM_OFFSET;
    indent.dxOffset = 500;
    ::SendMessageA(box_, EM_SETPARAFORMAT, 0, reinterpret_cast<LPARAM>(&indent));
    const std::string line = std::string("anna:\t") + kLine + "\r\n";
    ::SendMessageA(box_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(line.c_str()));
    ::SendMessageA(box_, WM_SETREDRAW, TRUE, 0);
    ::SendMessageA(box_, WM_VSCROLL, SB_BOTTOM, 0);
    ::InvalidateRect(box_, nullptr, FALSE);
  }

 private:
  HWND parent_, box_;
};

class Bench {
 public:
  Bench() {
    support::SetLanguage("English");
    core::gSound = "(S)";
    core::gChatWidth = 5000;
    core::gChatHeight = 6000;
    roster_.ClearlvUsers();
    roster_.AddUser("anna");
  }

  // The cost of a line includes the events that it causes, because work may be deferred.
  void Lines() {
    const auto chat = windows_.StartChat("anna|");
    const BareControl bare;
    int have = 0, bareHas = 0;
    double memory = 0;
    for (const int lines : kLines) {
      memory += Growth([&] { AddTo(*chat, lines - have); });
      bare.Fill(lines - bareHas);
      const double mine = MicrosecondsEach([&] { AddTo(*chat, kMeasured); });
      const double least = MicrosecondsEach([&] { Repeat(kMeasured, [&] { bare.Append(); }); });
      have = bareHas = lines + kMeasured;
      Row("a line after " + std::to_string(lines) + " others", mine, "us", 1.5 * least,
          "bare control " + std::to_string(std::lround(least)) + " us");
    }
    Row("memory of 50,000 lines", memory / 1024, "MB", 40);
    Earlier(chat->hwnd());
    Close(chat->hwnd());
  }

  void ManyChats() {
    std::vector<std::shared_ptr<conversation::FrmChat>> chats;
    for (int i = 0; i < kChats; ++i) chats.push_back(windows_.StartChat("anna|"));
    double seconds = 0;
    const double memory = Growth([&] {
      seconds = MicrosecondsEach([&] {
        for (int i = 0; i < kLinesOfChat / 100; ++i)
          for (const auto& chat : chats) AddTo(*chat, 100);
      });
    });
    std::printf("20 chats with 1,000 lines each: %.0f us a line, %.0f MB\n",
                seconds * kMeasured / (kChats * kLinesOfChat), memory / 1024);
    for (const auto& chat : chats) Close(chat->hwnd());
  }

  void UsersOnline() {
    for (int i = 0; i < kUsers; ++i) roster_.AddUser("user" + std::to_string(i));
    const auto chat = windows_.StartChat("");
    const HMENU users = ::GetSubMenu(::GetMenu(chat->hwnd()), 1);
    const auto open = [&](HMENU menu) {
      ::SendMessageA(chat->hwnd(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
    };
    const double all = Milliseconds([&] { open(users); });
    const HMENU group = ::GetSubMenu(users, ::GetMenuItemCount(users) / 2);
    const double both = all + Milliseconds([&] { open(group); });
    Row("Users Online with 5,000 names, a group", both, "ms", 1000,
        std::to_string(::GetMenuItemCount(group)) + " names in it");
    Close(chat->hwnd());
  }

  void Exports() {
    conversation::Conversation said;
    for (int i = 0; i < kExported; ++i) said.Add({"", i % 3 ? "anna" : "bob", kLine, i % 3 ? 0xFF : 0, {600}});
    const conversation::MarkupStyle style{
        .codePage = 1252, .font = "Tahoma", .maxIndent = {2880}, .paint = [](std::int32_t colour) {
          return std::optional(static_cast<std::uint32_t>(colour));
        }};
    Export("txt", [&](const core::Sink& sink) { WritePlainText(said, sink); });
    Export("rtf", [&](const core::Sink& sink) { WriteMarkup(said, BeginOf(said), EndOf(said), style, sink); });
  }

  void Opening() {
    Open(
        "chat window", [&](int i) { windows_.StartChat("user" + std::to_string(i) + '|'); }, "frmChat");
    Open(
        "popup", [&](int) { windows_.ShowAlert(kLine, "anna", 1); }, "frmPop");
  }

  bool Passed() const { return passed_; }

 private:
  static double MicrosecondsEach(const std::function<void()>& action) { return Microseconds(action) / kMeasured; }

  static double Growth(const std::function<void()>& action) {
    const double before = Kilobytes();
    action();
    return Kilobytes() - before;
  }

  static void Repeat(int lines, const std::function<void()>& append) {
    for (int i = 0; i < lines; ++i) {
      append();
      if (i % 50 == 49) core::RunPendingEvents();
    }
  }

  // Returns when the last line is shown.
  static void AddTo(conversation::FrmChat& chat, int lines) {
    static int count = 0;
    Repeat(lines, [&] { chat.AddMsg(kLine, "anna", 0xFF); });
    const std::string last = "last of " + std::to_string(++count) + ".";
    chat.AddMsg(last, "anna", 0xFF);
    for (const auto end = ::GetTickCount64() + kTimeout; LastRow(chat.hwnd()).find(last) == std::string::npos;) {
      core::RunPendingEvents();
      ::Sleep(1);
      if (::GetTickCount64() > end) throw std::runtime_error("the last line is not shown");
    }
  }

  static std::string LastRow(HWND chat) {
    const HWND box = ::FindWindowExA(chat, nullptr, "RichEdit20A", nullptr);
    char row[100] = {static_cast<char>(sizeof row - 1), 0};
    const LRESULT rows = ::SendMessageA(box, EM_GETLINECOUNT, 0, 0);
    ::SendMessageA(box, EM_GETLINE, static_cast<WPARAM>(rows - 2), reinterpret_cast<LPARAM>(row));
    return row;
  }

  void Row(const std::string& what, double measured, const char* unit, double limit, const std::string& beside = "") {
    const bool good = measured <= limit;
    passed_ = passed_ && good;
    std::printf("%-36s %8.0f %s, limit %.0f  %s  %s\n", what.c_str(), measured, unit, limit, beside.c_str(),
                good ? "" : "TOO MUCH");
    std::fflush(stdout);
  }

  // Becomes false when rows are inserted above: the control keeps the visible row in view.
  static bool AtTop(HWND box) { return ::SendMessageA(box, EM_GETFIRSTVISIBLELINE, 0, 0) == 0; }

  void Earlier(HWND chat) {
    for (int i = 0; i < 20; ++i) core::RunPendingEvents(), ::Sleep(20);
    const HWND box = ::FindWindowExA(chat, nullptr, "RichEdit20A", nullptr);
    ::SendMessageA(box, WM_VSCROLL, SB_TOP, 0);
    Row("first screen of earlier lines", Milliseconds([&] {
          for (const auto end = ::GetTickCount64() + 5000; ::GetTickCount64() < end && AtTop(box);)
            core::RunPendingEvents();
        }),
        "ms", 300);
  }

  void Export(const std::string& type, const core::Writer& writer) {
    const std::string path = core::InProgramDirectory("bench." + type);
    Row("export of 100,000 lines as ." + type, Milliseconds([&] { core::WriteFileSafely(path, writer); }), "ms", 2000);
    ::DeleteFileA(path.c_str());
  }

  static void Close(HWND hwnd) {
    ::SendMessageA(hwnd, WM_CLOSE, 0, 0);
    core::RunPendingEvents();
  }

  static void CloseAll(const char* className) {
    for (const HWND hwnd : support::WindowsOf(className)) Close(hwnd);
  }

  // The heap keeps memory of the first windows for the next ones, so only the growth of a second round is a leak.
  void Open(const char* what, const std::function<void(int)>& open, const char* className) {
    open(0);
    CloseAll(className);
    const double before = Kilobytes();
    const double first = Milliseconds([&] { open(0); });
    for (int i = 1; i + 1 < kWindows; ++i) open(i);
    const double last = Milliseconds([&] { open(kWindows - 1); });
    const double each = (Kilobytes() - before) / kWindows;
    CloseAll(className);
    const double closed = Kilobytes();
    for (int i = 0; i < kWindows; ++i) open(i);
    CloseAll(className);
    std::printf("%-11s  opening the 1st %6.1f ms, the %dth %6.1f ms; %5.0f KB each, %5.0f KB leaked by all\n", what,
                first, kWindows, last, each, Kilobytes() - closed);
    std::fflush(stdout);
  }

  bool passed_ = true;
  mainwindow::UserRoster roster_;
  support::RecordingPort port_;
  net::Messenger messenger_{port_};
  conversation::OpenWindows windows_{roster_, {roster_.lvUsers, [] { return std::string(); }}, messenger_};
};

}  // namespace

int main() {
  toolkit::LoadCommonControls();
  Bench bench;
  bench.Opening();
  bench.Exports();
  bench.Lines();
  bench.ManyChats();
  bench.UsersOnline();
  return bench.Passed() ? 0 : 1;
}
