#include "ui/toolkit/links.h"

#include <objbase.h>

#include <utility>

#include "core/message_box.h"
#include "core/system_library_win32.h"

namespace toolkit {
namespace {

// Shows the wait cursor for the duration of a scope.
class WaitPointer {
 public:
  WaitPointer() : former_(::SetCursor(::LoadCursorA(nullptr, IDC_WAIT))) {}
  WaitPointer(const WaitPointer&) = delete;
  WaitPointer& operator=(const WaitPointer&) = delete;
  ~WaitPointer() { ::SetCursor(former_); }

 private:
  HCURSOR former_;
};

// The shell may open links through COM objects. Initialised with the first link, for the rest of the run.
void PrepareCom() {
  using Initialize = HRESULT(WINAPI*)(void* reserved, DWORD flags);
  static bool prepared = false;
  if (std::exchange(prepared, true)) return;
  const HMODULE library = core::LoadSystemLibrary("ole32.dll");
  const auto initialize = library ? ::GetProcAddress(library, "CoInitializeEx") : nullptr;
  constexpr DWORD flags = COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE;
  if (initialize) reinterpret_cast<Initialize>(reinterpret_cast<void (*)()>(initialize))(nullptr, flags);
}

// An exception counts as success: there is no number to show.
INT_PTR ShellResult(const std::string& link, ShellOpen shell) {
  const WaitPointer wait;
  PrepareCom();
  try {
    // The directory is deliberately the text "1": links need none, and a program started this way must not keep our
    // folder as its current directory, which could then not be deleted.
    return reinterpret_cast<INT_PTR>(shell(nullptr, "open", link.c_str(), "", "1", SW_SHOWNORMAL));
  } catch (...) {
    return 1;
  }
}

}  // namespace

void OpenLink(const std::string& link, ShellOpen shell) {
  const INT_PTR result = ShellResult(link, shell);
  // For other errors the shell shows a message itself.
  if (result != 0) return;
  core::ShowBox({.text = "Error Opening Link to " + link + "\r\n\r\n" + std::to_string(result),
                 .icon = core::BoxIcon::Exclamation});
}

}  // namespace toolkit
