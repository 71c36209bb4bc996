// The portable interface to the message loop.
#pragma once

#include <cstdint>

namespace core {

// Handles pending window events until the queue is empty, for at most 50 ms, since fast timers could keep it going
// forever. During a dispatch only timers and painting run: input and commands may open something modal, which would
// block all further packets.
void RunPendingEvents();

// Sleeps until an event arrives, at most for the given number of milliseconds.
void WaitForEvent(std::int32_t milliseconds);

}  // namespace core
