// The event log, Log.txt beside the program: the only trace of events and failures.
#pragma once

#include <string_view>

namespace core {

// Appends one record: local date and time, one blank, the text. When that fails, posts a message box with the text.
void WriteLog(std::string_view text);

// Deliberately does nothing, for compatibility: the log grows without limit.
void TrimLog();

}  // namespace core
