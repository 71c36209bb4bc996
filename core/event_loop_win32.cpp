#include "core/event_loop_win32.h"

#include <climits>

#include "core/callback_guard.h"
#include "core/event_loop.h"
#include "core/globals.h"
#include "core/message_box.h"

namespace core {
namespace {

constexpr DWORD kPendingTime = 50;  // milliseconds
constexpr int kMaxNestedMessages = 64;

MessageFilter gFilter = nullptr;

// False for WM_QUIT.
bool NextMessage(MSG& message) { return ::GetMessageA(&message, nullptr, 0, 0) > 0; }

// The filter runs outside of any window procedure, so it needs a guard of its own.
void Handle(MSG& message) {
  if (gFilter != nullptr && Guarded([&message] { return gFilter(message); })) return;
  ::TranslateMessage(&message);
  ::DispatchMessageA(&message);
}

bool Take(MSG& message, UINT first, UINT last) { return ::PeekMessageA(&message, nullptr, first, last, PM_REMOVE); }

void RunWhilePending(int maxMessages, bool (*next)(MSG& message)) {
  const DWORD start = ::GetTickCount();
  MSG message;
  for (int i = 0; i < maxMessages && next(message); ++i) {
    // PeekMessage returns WM_QUIT whatever the range; it belongs to the loop that this call interrupts.
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

void RunMessageLoopWhile(const std::function<bool()>& isOpen) {
  MSG message{};
  for (ShowPostedBoxes(); isOpen(); ShowPostedBoxes()) {
    if (!NextMessage(message)) return ::PostQuitMessage(static_cast<int>(message.wParam));
    Handle(message);
  }
}

void RunPendingEvents() {
  if (gDispatching) return RunTimersAndPainting();
  RunWhilePending(INT_MAX, [](MSG& message) { return Take(message, 0, 0); });
}

void RunTimersAndPainting() {
  RunWhilePending(kMaxNestedMessages,
                  [](MSG& message) { return Take(message, WM_TIMER, WM_TIMER) || Take(message, WM_PAINT, WM_PAINT); });
}

bool DeferDuringDispatch(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  return gDispatching && ::InSendMessage() && ::PostMessageA(hwnd, message, wParam, lParam);
}

void WaitForEvent(std::int32_t milliseconds) {
  // MWMO_INPUTAVAILABLE: also return for input that was seen earlier and left in the queue.
  ::MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(milliseconds), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

}  // namespace core
