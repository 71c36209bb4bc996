// What code that cannot see Windows asks of the message loop.
#pragma once

#include <cstdint>

namespace core {

// Let pending window events run once: until the queue is empty, but for at most 50 ms, so that the fast timers of the
// program cannot keep it going for ever. While a packet is dispatched only timers and painting run: input and commands
// wait, since what they open may be modal, and all further packets would wait for its end.
void RunPendingEvents();

// Sleeps until an event arrives or the time (milliseconds) is over.
void WaitForEvent(std::int32_t milliseconds);

}  // namespace core
