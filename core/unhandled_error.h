// The last resort for a failure that nobody expected where it happened.
#pragma once

#include "core/runtime_error.h"

namespace core {

// Shows number and description in a box, at once. For window procedures: the event at hand is abandoned, the program
// goes on, and no exception reaches Windows.
void ReportUnhandled(const RuntimeError& error);

}  // namespace core
