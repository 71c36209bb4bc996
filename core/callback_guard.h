// The guard around every callback from Windows: an exception must not propagate through the system's stack frames.
#pragma once

#include "core/runtime_error.h"

namespace core {

// Shows number and description in a message box: the last resort for unexpected failures. The box is posted instead
// during a dispatch, during start-up (which must finish unattended), and while another such box is open (a timer may
// fail repeatedly).
void ReportUnhandled(const RuntimeError& error);

// Posts that message box.
void PostUnhandled(const RuntimeError& error);

// Calls ReportUnhandled for the current exception. Never throws, even when there is no memory for the box.
void ReportCurrentError() noexcept;

// Runs an event handler. An exception is reported and ends the handler; the result is then zero.
template <class Event>
auto Guarded(Event event) noexcept -> decltype(event()) {
  try {
    return event();
  } catch (...) {
    ReportCurrentError();
  }
  return decltype(event())();
}

// The same without a report, for handlers that run often and may fail every time, such as drawing.
template <class Event>
auto GuardedSilently(Event event) noexcept -> decltype(event()) {
  try {
    return event();
  } catch (...) {
    return decltype(event())();
  }
}

}  // namespace core
