// The event log, Log.txt beside the program: the only trace of events and failures.
#pragma once

#include <string_view>

namespace core {

// Appends one record: the local date and time, one blank, the text. When the file cannot be written a box with the
// text waits for the user, and the caller goes on.
void WriteLog(std::string_view text);

// Keeps the log at 300 lines, or would: what it counts the lines of is an empty buffer, so the log keeps every line it
// was ever given. Users rely on that; do not "repair" it.
void TrimLog();

}  // namespace core
