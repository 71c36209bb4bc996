#include "core/event_loop_win32.h"

#include <climits>

#include "core/callback_guard.h"
#include "core/event_loop.h"
#include "core/globals.h"
#include "core/message_box.h"

namespace core {
namespace {

constexpr DWORD kPendingTime = 50;  // milliseconds
constexpr int kMaxInterjected = 64;

MessageFilter gFilter = nullptr;

// False for WM_QUIT.
bool NextMessage(MSG& message) { return ::GetMessageA(&message, nullptr, 0, 0) > 0; }

// The filter is the program's own code and runs outside every window procedure.
void Handle(MSG& message) {
  if (gFilter != nullptr && Guarded([&message] { return gFilter(message); })) return;
  ::TranslateMessage(&message);
  ::DispatchMessageA(&message);
}

bool Take(MSG& message, UINT first, UINT last) { return ::PeekMessageA(&message, nullptr, first, last, PM_REMOVE); }

void RunWhilePending(int most, bool (*next)(MSG& message)) {
  const DWORD start = ::GetTickCount();
  MSG message;
  for (int i = 0; i < most && next(message); ++i) {
    // Passes every filter, and is meant for the loop that this call interrupts.
    if (message.message == WM_QUIT) return ::PostQuitMessage(static_cast<int>(message.wParam));
    Handle(message);
    if (::GetTickCount() - start >= kPendingTime) return;
  }
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
  if (gDispatching) return RunTimersAndPainting();
  RunWhilePending(INT_MAX, [](MSG& message) { return Take(message, 0, 0); });
}

void RunTimersAndPainting() {
  RunWhilePending(kMaxInterjected,
                  [](MSG& message) { return Take(message, WM_TIMER, WM_TIMER) || Take(message, WM_PAINT, WM_PAINT); });
}

bool PutOff(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  return gDispatching && ::InSendMessage() && ::PostMessageA(hwnd, message, wParam, lParam);
}

void WaitForEvent(std::int32_t milliseconds) {
  // Also for input that an earlier look left in the queue, or it would lie there until the time is over.
  ::MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(milliseconds), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

}  // namespace core
