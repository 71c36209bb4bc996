// The message loop of the program's one thread.
#pragma once

#include <windows.h>

namespace core {

// Sees every message before it is translated and dispatched, in the loop as in RunPendingEvents; true when it took the
// message. For dialog keys and accelerators. Null takes it away again.
using MessageFilter = bool (*)(MSG& message);
void SetMessageFilter(MessageFilter filter);

// Runs until WM_QUIT and returns its exit code. Posted boxes are shown between messages.
int RunMessageLoop();

}  // namespace core
