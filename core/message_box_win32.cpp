#include "core/message_box.h"

#include <windows.h>

#include <utility>

#include "core/box_queue.h"

namespace core {
namespace {

BoxQueue gPostedBoxes;

UINT IconStyle(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::None:
      return 0;
    case BoxIcon::Information:
      return MB_ICONINFORMATION;
    case BoxIcon::Exclamation:
      return MB_ICONEXCLAMATION;
    case BoxIcon::Critical:
      return MB_ICONERROR;
  }
  return 0;
}

int Show(const Box& box, UINT buttons) {
  return ::MessageBoxA(nullptr, box.text.c_str(), box.title.c_str(), MB_TASKMODAL | IconStyle(box.icon) | buttons);
}

}  // namespace

void ShowBox(const Box& box) { Show(box, MB_OK); }

bool AskBox(const Box& box) { return Show(box, MB_YESNO) == IDYES; }

void PostBox(Box box) {
  gPostedBoxes.Post(std::move(box));
  // The loop may be asleep: what posts a box can run inside its wait, out of a message sent by another thread.
  ::PostThreadMessageA(::GetCurrentThreadId(), WM_NULL, 0, 0);
}

// Topmost, or an alert popup would cover the box and, disabled by it, could not be moved out of its way.
void ShowPostedBoxes() {
  gPostedBoxes.ShowAll([](const Box& box) { Show(box, MB_OK | MB_TOPMOST); });
}

}  // namespace core
