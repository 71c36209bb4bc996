// The message loop of the program's one thread.
#pragma once

#include <windows.h>

#include <functional>

namespace core {

// Sees every message before it is translated and dispatched, in the loop as in RunPendingEvents; true when it took the
// message. For dialog keys and accelerators. Null takes it away again.
using MessageFilter = bool (*)(MSG& message);
void SetMessageFilter(MessageFilter filter);

// Runs until WM_QUIT and returns its exit code. Posted boxes are shown between messages.
int RunMessageLoop();

// The same loop for a modal window: runs while `goOn` says so. A WM_QUIT ends it and is left for the loop outside.
void RunMessageLoopWhile(const std::function<bool()>& goOn);

// Timers and painting alone, at most 64 of them and for 50 ms: what may run in the middle of anything else, since
// nothing modal begins in it and no input is answered.
void RunTimersAndPainting();

// While a packet is dispatched, a command that another program sends waits like one that was posted. True when the
// message has been posted for later; its receiver then leaves it alone.
bool PutOff(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace core
