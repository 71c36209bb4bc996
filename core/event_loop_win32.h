// The message loop of the program's one thread.
#pragma once

#include <windows.h>

#include <functional>

namespace core {

// Called for every message before it is translated and dispatched, for dialog keys and accelerators; returns true when
// it has handled the message. Null removes the filter.
using MessageFilter = bool (*)(MSG& message);
void SetMessageFilter(MessageFilter filter);

// Runs until WM_QUIT and returns its exit code. Posted boxes are shown between messages.
int RunMessageLoop();

// The same loop for a modal window: runs while `isOpen` returns true. WM_QUIT ends it and is reposted for the outer
// loop.
void RunMessageLoopWhile(const std::function<bool()>& isOpen);

// Handles only timers and painting, at most 64 messages and for 50 ms. Safe to call from anywhere: it opens nothing
// modal and handles no input.
void RunTimersAndPainting();

// During a dispatch, reposts a command that another program has sent, so that it waits like a posted one. True when the
// message was reposted; the caller then ignores it.
bool DeferDuringDispatch(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace core
