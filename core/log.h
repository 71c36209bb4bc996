// The event log, Log.txt beside the program: the only trace of events and failures.
#pragma once

#include <string_view>

namespace core {

// Appends one record: the local date and time, one blank, the text. When the file cannot be written a box with the
// text waits for the user, and the caller goes on.
void WriteLog(std::string_view text);

// Deliberately does nothing, for compatibility: the log grows without limit.
void TrimLog();

}  // namespace core
