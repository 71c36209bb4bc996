#include "core/event_loop_win32.h"

#include "core/event_loop.h"
#include "core/message_box.h"

namespace core {
namespace {

constexpr DWORD kPendingTime = 50;  // milliseconds

MessageFilter gFilter = nullptr;

// False for WM_QUIT.
bool NextMessage(MSG& message) { return ::GetMessageA(&message, nullptr, 0, 0) > 0; }

void Handle(MSG& message) {
  if (gFilter != nullptr && gFilter(message)) return;
  ::TranslateMessage(&message);
  ::DispatchMessageA(&message);
}

}  // namespace

void SetMessageFilter(MessageFilter filter) { gFilter = filter; }

int RunMessageLoop() {
  MSG message{};
  for (ShowPostedBoxes(); NextMessage(message); ShowPostedBoxes()) Handle(message);
  return static_cast<int>(message.wParam);
}

void RunMessageLoopWhile(const std::function<bool()>& goOn) {
  MSG message{};
  for (ShowPostedBoxes(); goOn(); ShowPostedBoxes()) {
    if (!NextMessage(message)) return ::PostQuitMessage(static_cast<int>(message.wParam));
    Handle(message);
  }
}

void RunPendingEvents() {
  const DWORD start = ::GetTickCount();
  MSG message;
  while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      ::PostQuitMessage(static_cast<int>(message.wParam));  // it is meant for the loop that this call interrupts
      return;
    }
    Handle(message);
    if (::GetTickCount() - start >= kPendingTime) return;
  }
}

void WaitForEvent(std::int32_t milliseconds) {
  // Also for input that an earlier look left in the queue, or it would lie there until the time is over.
  ::MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(milliseconds), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

}  // namespace core
