#include "ui/toolkit/links.h"

#include "core/message_box.h"
#include "core/numbers.h"

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

}  // namespace toolkit
