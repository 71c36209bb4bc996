// The cost of the owner-drawn menus compared with the system's, and leaks in operations repeated all day: opening
// menus, showing alerts, changing the language. Prints a table of name, limit and figures; exit status 1 when a limit
// is exceeded. Takes no arguments.
#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "core/event_loop.h"
#include "core/globals.h"
#include "support/recording_network.h"
#include "support/object_count.h"
#include "support/window_probe.h"
#include "ui/conversation/open_windows.h"
#include "ui/main/frm_main.h"
#include "ui/toolkit/window.h"

namespace {

constexpr int kOpenings = 1000, kPopups = 1000, kLanguages = 100;

constexpr double kHalfFrame = 8;  // milliseconds; not noticeable

// Tolerance: Wine's counts are table positions, and freed ones are not reused at once.
constexpr int kNoGrowth = 20;

int drawn = 0;

LRESULT CALLBACK CountDrawn(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR) {
  drawn += message == WM_DRAWITEM;
  return ::DefSubclassProc(hwnd, message, wParam, lParam);
}

double Milliseconds() {
  LARGE_INTEGER now{}, frequency{};
  ::QueryPerformanceCounter(&now);
  ::QueryPerformanceFrequency(&frequency);
  return 1e3 * static_cast<double>(now.QuadPart) / static_cast<double>(frequency.QuadPart);
}

class Bench {
 public:
  ~Bench() { Unload(); }

  // Safe mode has the system draw the same menu.
  void CompareOpening() {
    const double system = Opening(1, 200), own = Opening(0, 200);
    Row("open, draw and close the largest menu", "<= system's + 8 ms", own <= system + kHalfFrame);
    std::printf("%.2f ms (the system's %.2f ms)\n", own, system);
    Row("items that one opening draws", "> 0", drawn > 0);
    std::printf("%d\n", drawn / 200);
  }

  void LeaveNothing() {
    Load(0);
    Watch("1,000 menu openings", kOpenings, [this](int) { OpenMenu(); });
    Watch("1,000 popups", kPopups, [this](int) {
      windows_.ShowAlert("An ordinary alert", "anna", 1);
      for (const HWND popup : support::WindowsOf("frmPop")) ::SendMessageA(popup, WM_CLOSE, 0, 0);
      core::RunPendingEvents();
    });
    Watch("100 language changes", kLanguages, [this](int round) {
      support::SetLanguage(round % 2 ? "English" : "Deutsch");
      toolkit::Window::SetLanOfAll();
    });
  }

  bool Passed() const { return passed_; }

 private:
  void Load(std::int16_t safe) {
    Unload();
    core::gSafe = safe;
    main_ = std::make_shared<mainwindow::FrmMain>(roster_, messenger_, mainwindow::MainCommands{});
    main_->Load();
    main_->ShowMe();
    ::SetWindowSubclass(main_->hwnd(), CountDrawn, 1, 0);
    core::RunPendingEvents();
  }

  void Unload() {
    if (main_) ::DestroyWindow(main_->hwnd());
    main_.reset();
  }

  // The key is posted first: the menu reads it after it has been shown and drawn.
  void OpenMenu() {
    const HMENU menu = ::GetSubMenu(::GetMenu(main_->hwnd()), 0);
    ::PostMessageA(main_->hwnd(), WM_KEYDOWN, VK_ESCAPE, 0);
    ::TrackPopupMenu(menu, 0, 400, 100, 0, main_->hwnd(), nullptr);
  }

  // Median of one opening.
  double Opening(std::int16_t safe, int rounds) {
    Load(safe);
    OpenMenu();
    drawn = 0;
    std::vector<double> times;
    for (int i = 0; i < rounds; ++i) {
      const double start = Milliseconds();
      OpenMenu();
      times.push_back(Milliseconds() - start);
    }
    std::ranges::nth_element(times, times.begin() + rounds / 2);
    return times[static_cast<std::size_t>(rounds / 2)];
  }

  // Counts objects before and after; the first rounds create what stays.
  void Watch(const char* what, int rounds, const std::function<void(int)>& round) {
    for (int i = 0; i < 10; ++i) round(i);
    const toolkit::ObjectCount before = toolkit::CountObjects();
    for (int i = 0; i < rounds; ++i) round(i);
    const toolkit::ObjectCount after = toolkit::CountObjects();
    Row(what, "no growth", after.gdi < before.gdi + kNoGrowth && after.user < before.user + kNoGrowth);
    std::printf("GDI %d -> %d, USER %d -> %d\n", before.gdi, after.gdi, before.user, after.user);
  }

  void Row(const char* what, const char* limit, bool good) {
    passed_ = passed_ && good;
    std::printf("%-9s %-40s %-18s ", good ? "" : "TOO MUCH", what, limit);
  }

  mainwindow::UserRoster roster_;
  support::RecordingPort port_;
  net::Messenger messenger_{port_};
  conversation::OpenWindows windows_{roster_, {roster_.lvUsers, [] { return std::string(); }}, messenger_};
  std::shared_ptr<mainwindow::FrmMain> main_;
  bool passed_ = true;
};

}  // namespace

int main() {
  toolkit::LoadCommonControls();
  support::SetLanguage("English");
  Bench bench;
  bench.CompareOpening();
  bench.LeaveNothing();
  return bench.Passed() ? 0 : 1;
}
