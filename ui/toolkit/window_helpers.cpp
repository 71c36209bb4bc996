#include "ui/toolkit/window_helpers.h"

#include <commctrl.h>

#include "core/desktop.h"
#include "core/numbers.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

// The hourglass for as long as it lives.
class WaitPointer {
 public:
  WaitPointer() : former_(::SetCursor(::LoadCursorA(nullptr, IDC_WAIT))) {}
  WaitPointer(const WaitPointer&) = delete;
  WaitPointer& operator=(const WaitPointer&) = delete;
  ~WaitPointer() { ::SetCursor(former_); }

 private:
  HCURSOR former_;
};

constexpr UINT kTopMostFlags = SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE;
static_assert(kTopMostFlags == 0x13);

// The second flag means nothing to ::RemoveMenu, so it does no harm.
constexpr UINT kRemoveFlags = MF_BYPOSITION | MF_DISABLED;
static_assert(kRemoveFlags == 1026);

// A failure to ask the shell at all counts as its success: there is no number to show.
INT_PTR ShellResult(const std::string& link, ShellOpen shell) {
  const WaitPointer wait;
  try {
    // The directory is the text "1" on purpose. A link needs none, and no program that it starts may take our folder
    // as its own and keep it from being deleted.
    return reinterpret_cast<INT_PTR>(shell(nullptr, "open", link.c_str(), "", "1", SW_SHOWNORMAL));
  } catch (...) {
    return 1;
  }
}

}  // namespace

void OpenLink(const std::string& link, ShellOpen shell) {
  const INT_PTR result = ShellResult(link, shell);
  // The shell's other error numbers come with a message of its own.
  if (result != 0) return;
  core::ShowBox({.text = "Error Opening Link to " + link + "\r\n\r\n" + core::PlainText(result),
                 .icon = core::BoxIcon::Exclamation});
}

void LoadCommonControls() {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_LINK_CLASS |
                                                     ICC_STANDARD_CLASSES | ICC_TREEVIEW_CLASSES};
  ::InitCommonControlsEx(&controls);
}

void SetTopMost(HWND window, bool onTop) {
  ::SetWindowPos(window, onTop ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, kTopMostFlags);
}

void RemoveCloseItem(HWND window) {
  const HMENU menu = ::GetSystemMenu(window, FALSE);
  ::RemoveMenu(menu, static_cast<UINT>(::GetMenuItemCount(menu) - 1), kRemoveFlags);
  ::DrawMenuBar(window);
}

WorkArea GetWorkArea(HWND window) {
  const RECT area = WorkAreaPixels();
  const WindowDc dc(window);
  const Dpi across{::GetDeviceCaps(dc.get(), LOGPIXELSX)}, down{::GetDeviceCaps(dc.get(), LOGPIXELSY)};
  return {ToTwips(area.left, across), ToTwips(area.top, down), ToTwips(area.right, across), ToTwips(area.bottom, down)};
}

}  // namespace toolkit
