#include "ui/toolkit/modal.h"

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
  explicit OthersDisabled(HWND except) {
    ::EnumThreadWindows(::GetCurrentThreadId(), Collect, reinterpret_cast<LPARAM>(&others_));
    std::erase(others_, except);
    for (const HWND other : others_) ::EnableWindow(other, FALSE);
  }
  OthersDisabled(const OthersDisabled&) = delete;
  OthersDisabled& operator=(const OthersDisabled&) = delete;
  ~OthersDisabled() {
    for (const HWND other : others_) ::EnableWindow(other, TRUE);
  }

 private:
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

}  // namespace toolkit
