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

}  // namespace core
