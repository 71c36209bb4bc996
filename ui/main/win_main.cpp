// The process: common controls, the program, the event loop.
#include <windows.h>
#include <commctrl.h>

#include "core/event_loop_win32.h"
#include "core/start_up.h"
#include "ui/main/application.h"
#include "ui/toolkit/window.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR arguments, int) {
  INITCOMMONCONTROLSEX controls{sizeof controls, 
      ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_LINK_CLASS | ICC_STANDARD_CLASSES};
  ::InitCommonControlsEx(&controls);
  core::SetMessageFilter(toolkit::FilterMessage);
  mainwindow::Application application;
  core::Main(application, arguments);
  return core::RunMessageLoop();
}
