#include "ui/toolkit/modal.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "core/callback_guard.h"
#include "core/event_loop_win32.h"

namespace toolkit {
namespace {

// Includes hidden windows: the notification icon could show the main window.
BOOL CALLBACK Collect(HWND hwnd, LPARAM windows) {
  core::Guarded([&] {
    if (::IsWindowEnabled(hwnd) && (::IsWindowVisible(hwnd) || Window::Of(hwnd)))
      reinterpret_cast<std::vector<HWND>*>(windows)->push_back(hwnd);
  });
  return TRUE;
}

bool IsOnTop(HWND hwnd) { return (::GetWindowLongA(hwnd, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0; }

// Disables all windows of the program except one, and enables the same ones again. Topmost windows are lowered
// meanwhile: a disabled chat window on top of the modal one could not be moved away.
class OthersDisabled {
 public:
  explicit OthersDisabled(HWND except) : except_(except) {
    ::EnumThreadWindows(::GetCurrentThreadId(), Collect, reinterpret_cast<LPARAM>(&others_));
    std::erase(others_, except);
    std::ranges::copy_if(others_, std::back_inserter(onTop_), IsOnTop);
    for (const HWND other : onTop_) SetTopMost(other, false);
    for (const HWND other : others_) ::EnableWindow(other, FALSE);
    gModal.push_back(this);
  }
  OthersDisabled(const OthersDisabled&) = delete;
  OthersDisabled& operator=(const OthersDisabled&) = delete;
  ~OthersDisabled() {
    Enable();
    std::erase(gModal, this);
  }

  void Enable() {
    for (const HWND other : std::exchange(others_, {})) ::EnableWindow(other, TRUE);
    for (const HWND other : std::exchange(onTop_, {})) SetTopMost(other, true);
  }

  static HWND Innermost() { return gModal.empty() ? nullptr : gModal.back()->except_; }

  static void EnableAround(HWND hwnd) {
    for (OthersDisabled* modal : gModal)
      if (modal->except_ == hwnd) modal->Enable();
  }

 private:
  static inline std::vector<OthersDisabled*> gModal;

  HWND except_;
  std::vector<HWND> others_, onTop_;
};

}  // namespace

void RunModal(Window& window) {
  const HWND before = ::GetActiveWindow();
  const std::shared_ptr<Window> keep = window.shared_from_this();
  {
    const OthersDisabled others(window.hwnd());
    window.Show();
    ::SetForegroundWindow(window.hwnd());
    core::RunMessageLoopWhile([&window] { return window.hwnd() != nullptr; });
  }
  if (::IsWindow(before)) ::SetActiveWindow(before);
  if (window.hwnd()) ::DestroyWindow(window.hwnd());
}

// The desktop hides the window when it minimises the owner.
void RaiseModal() {
  const HWND hwnd = OthersDisabled::Innermost();
  if (!hwnd) return;
  if (const HWND owner = ::GetWindow(hwnd, GW_OWNER); ::IsIconic(owner)) ::ShowWindow(owner, SW_RESTORE);
  ::ShowWindow(hwnd, SW_SHOW);
  ::SetForegroundWindow(hwnd);
}

void CloseModal(Window& window) {
  const HWND hwnd = window.hwnd();
  OthersDisabled::EnableAround(hwnd);
  ::DestroyWindow(hwnd);
}

}  // namespace toolkit
