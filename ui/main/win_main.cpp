// The process: the program, the event loop.
#include <windows.h>

#include "core/event_loop_win32.h"
#include "core/globals.h"
#include "core/message_box.h"
#include "core/process.h"
#include "core/start_up.h"
#include "core/system_library_win32.h"
#include "ui/main/application.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/window.h"

namespace {

// Finds a window of the program, a visible one as long as there is no icon in the notification area. The system creates
// hidden windows for message boxes and the input method.
BOOL CALLBACK LookAt(HWND window, LPARAM found) {
  const bool ours = ::GetClassLongPtrA(window, GCLP_HMODULE) == reinterpret_cast<ULONG_PTR>(toolkit::Instance());
  const bool shows = core::gStarting == 0 || ::IsWindowVisible(window);
  if (ours && shows) *reinterpret_cast<bool*>(found) = true;
  return !(ours && shows);
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
  // When a start fails before it shows a window, nobody sees the process, and it would block the user's next start
  // until logoff.
  core::ShowPostedBoxes();
  if (!HasWindows()) core::EndProcess();
  return core::RunMessageLoop();
}
