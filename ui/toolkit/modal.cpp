#include "ui/toolkit/modal.h"

#include <utility>
#include <vector>

#include "core/event_loop_win32.h"

namespace toolkit {
namespace {

BOOL CALLBACK Collect(HWND hwnd, LPARAM windows) {
  if (::IsWindowVisible(hwnd) && ::IsWindowEnabled(hwnd))
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(hwnd);
  return TRUE;
}

// Disables the program's windows but for one, and enables the same ones again.
class OthersDisabled {
 public:
  explicit OthersDisabled(HWND except) : except_(except) {
    ::EnumThreadWindows(::GetCurrentThreadId(), Collect, reinterpret_cast<LPARAM>(&others_));
    std::erase(others_, except);
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
  }

  static void EnableAround(HWND hwnd) {
    for (OthersDisabled* modal : gModal)
      if (modal->except_ == hwnd) modal->Enable();
  }

 private:
  static inline std::vector<OthersDisabled*> gModal;

  HWND except_;
  std::vector<HWND> others_;
};

}  // namespace

void RunModal(Window& window) {
  const HWND before = ::GetActiveWindow();
  const std::shared_ptr<Window> keep = window.shared_from_this();
  {
    const OthersDisabled others(window.hwnd());
    window.Show();
    ::SetForegroundWindow(window.hwnd());
    core::RunMessageLoopWhile([&window] { return window.hwnd() && ::IsWindowVisible(window.hwnd()); });
  }
  if (::IsWindow(before)) ::SetActiveWindow(before);
  if (window.hwnd()) ::DestroyWindow(window.hwnd());
}

void CloseModal(Window& window) {
  const HWND hwnd = window.hwnd();
  OthersDisabled::EnableAround(hwnd);
  ::DestroyWindow(hwnd);
}

}  // namespace toolkit
