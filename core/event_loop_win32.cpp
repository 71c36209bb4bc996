#include "core/event_loop_win32.h"

#include "core/desktop.h"

namespace core {
namespace {

constexpr DWORD kPendingTime = 50;  // milliseconds

MessageFilter gFilter = nullptr;

void Handle(MSG& message) {
  if (gFilter != nullptr && gFilter(message)) return;
  ::TranslateMessage(&message);
  ::DispatchMessageA(&message);
}

}  // namespace

void SetMessageFilter(MessageFilter filter) { gFilter = filter; }

int RunMessageLoop() {
  MSG message;
  for (;;) {
    ShowPostedBoxes();
    const BOOL got = ::GetMessageA(&message, nullptr, 0, 0);
    if (got == 0) return static_cast<int>(message.wParam);
    if (got > 0) Handle(message);
  }
}

void RunMessageLoopWhile(const std::function<bool()>& goOn) {
  MSG message;
  while (goOn()) {
    ShowPostedBoxes();
    const BOOL got = ::GetMessageA(&message, nullptr, 0, 0);
    if (got == 0) return ::PostQuitMessage(static_cast<int>(message.wParam));
    if (got > 0) Handle(message);
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
