// What conversations cost as real windows, beside what the system's own rich text box costs for the same. Prints a
// table of name and figures; takes no arguments. Exit status 1 when a line costs more behind many others than one and a
// half times what it costs behind none, and the box is not to blame.
#include <windows.h>
#include <commctrl.h>
#include <psapi.h>
#include <richedit.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>

#include "core/event_loop.h"
#include "core/globals.h"
#include "support/recording_network.h"
#include "support/window_probe.h"
#include "ui/conversation/open_windows.h"
#include "ui/main/user_roster.h"
#include "ui/toolkit/window.h"

namespace {

constexpr char kLine[] = "An ordinary line of a conversation, as people write it";
constexpr int kLines[] = {0, 10000, 50000};
constexpr int kMeasured = 500;
constexpr int kWindows = 30;

double Seconds(FILETIME time) {
  const ULARGE_INTEGER units{{time.dwLowDateTime, time.dwHighDateTime}};
  return static_cast<double>(units.QuadPart) / 1e7;
}

// Of the processor, so that other programs on the machine do not count.
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

// The least that adding a coloured, indented line at the end of a rich text box takes.
class BareBox {
 public:
  explicit BareBox(HWND parent)
      : box_(::CreateWindowExA(0, "RichEdit20A", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | ES_MULTILINE | ES_READONLY, 0,
                               0, 300, 200, parent, nullptr, nullptr, nullptr)) {
    ::SendMessageA(box_, EM_EXLIMITTEXT, 0, 1 << 28);
  }
  ~BareBox() { ::DestroyWindow(box_); }
  BareBox(const BareBox&) = delete;
  BareBox& operator=(const BareBox&) = delete;

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
  }

 private:
  HWND box_;
};

class Bench {
 public:
  Bench() {
    support::Speak("English");
    core::gSound = "(S)";
    core::gChatWidth = 5000;
    core::gChatHeight = 6000;
    roster_.ClearlvUsers();
    roster_.AddUser("anna");
  }

  // False when a limit is missed.
  bool Lines() {
    const auto chat = windows_.StartChat("anna|");
    const BareBox bare(chat->hwnd());
    const auto append = [&] { chat->AddMsg(kLine, "anna", 0xFF); };
    const auto bareAppend = [&] { bare.Append(); };
    int have = 0, bareHas = 0;
    double firstMine = 0, firstLeast = 0;
    bool flat = true;
    for (const int lines : kLines) {
      const double before = Kilobytes();
      for (; have < lines; ++have) append();
      if (lines == kLines[1])
        std::printf("memory of a line                       %8.1f KB\n", (Kilobytes() - before) / lines);
      for (int i = bareHas; i < lines; ++i) bareAppend();
      bareHas = lines;
      core::RunPendingEvents();
      const double mine = Mean(append), least = Mean(bareAppend);
      if (lines == 0) firstMine = mine, firstLeast = least;
      const bool good = mine - firstMine <= std::max(0.5 * firstMine, 1.5 * (least - firstLeast));
      flat = flat && good;
      std::printf("a line behind %-6d others             %8.0f us    bare box %.0f us  %s\n", lines, mine, least,
                  good ? "" : "TOO MUCH");
      std::fflush(stdout);
    }
    Close(chat->hwnd());
    return flat;
  }

  void Opening() {
    Open(
        "chat window", [&](int i) { windows_.StartChat("user" + std::to_string(i) + '|'); }, "frmChat");
    Open(
        "popup", [&](int) { windows_.ShowAlert(kLine, "anna", 1); }, "frmPop");
  }

 private:
  static double Mean(const std::function<void()>& action) {
    return Microseconds([&] {
             for (int i = 0; i < kMeasured; ++i) action();
           }) /
           kMeasured;
  }

  static void Close(HWND hwnd) {
    ::SendMessageA(hwnd, WM_CLOSE, 0, 0);
    core::RunPendingEvents();
  }

  static void CloseAll(const char* className) {
    for (const HWND hwnd : support::WindowsOf(className)) Close(hwnd);
  }

  // What the heap keeps of the first windows it gives to the next ones, so only what a second round adds is left over.
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
    std::printf("%-11s  opening the 1st %6.1f ms, the %dth %6.1f ms; %5.0f KB each, %5.0f KB left of all\n", what,
                first, kWindows, last, each, Kilobytes() - closed);
    std::fflush(stdout);
  }

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
  return bench.Lines() ? 0 : 1;
}
