// The process: the program, the event loop.
#include <windows.h>

#include "core/event_loop_win32.h"
#include "core/message_box.h"
#include "core/process.h"
#include "core/start_up.h"
#include "core/system_library_win32.h"
#include "ui/main/application.h"
#include "ui/toolkit/window.h"

namespace {

// Notes a window of ours; boxes and the input method leave some of the system's behind.
BOOL CALLBACK LookAt(HWND window, LPARAM found) {
  const bool ours =
      ::GetClassLongPtrA(window, GCLP_HMODULE) == reinterpret_cast<ULONG_PTR>(::GetModuleHandleA(nullptr));
  if (ours) *reinterpret_cast<bool*>(found) = true;
  return !ours;
}

bool HasWindows() {
  bool found = false;
  ::EnumThreadWindows(::GetCurrentThreadId(), LookAt, reinterpret_cast<LPARAM>(&found));
  return found;
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
  core::SearchSystemLibrariesOnly();
  core::SetMessageFilter(toolkit::FilterMessage);
  mainwindow::Application application;
  core::Main(application, arguments);
  // A start that failed before its first window leaves nothing that could ever end the program, and the process would
  // keep the user's next start out until he logs off.
  core::ShowPostedBoxes();
  if (!HasWindows()) core::EndProcess();
  return core::RunMessageLoop();
}
