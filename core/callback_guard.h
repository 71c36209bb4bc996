// What every callback of Windows runs in. No exception may leave one: there are frames of the system above it that
// cannot carry it.
#pragma once

#include "core/runtime_error.h"

namespace core {

// Shows number and description in a box: the last resort for a failure that nobody expected where it happened. At once,
// but it is posted while a packet is dispatched, while a start must go on with nobody at the desk, and while another
// such box is up (a timer may fail again and again).
void ReportUnhandled(const RuntimeError& error);

// The same for the exception that is being handled. Nothing leaves it, also when there is no memory for the box.
void ReportCaught() noexcept;

// Runs an event. A failure is reported and the rest of the event given up; the result is then zero.
template <class Event>
auto Guarded(Event event) noexcept -> decltype(event()) {
  try {
    return event();
  } catch (...) {
    ReportCaught();
  }
  return decltype(event())();
}

// The same without a word, for what may fail at each of many calls: drawing, say.
template <class Event>
auto GuardedSilently(Event event) noexcept -> decltype(event()) {
  try {
    return event();
  } catch (...) {
    return decltype(event())();
  }
}

}  // namespace core
