// The process, the user it runs for, and its start at logon.
#pragma once

#include <string>

namespace core {

inline constexpr char kProgramName[] = "Quillon";

// The name of the logged-on user; empty when the system call fails.
std::string GetLogonName();

// True when another copy already runs for the same user. The first call registers this copy.
bool AnotherCopyRuns();

// The program's file name without its extension.
std::string ProgramFileTitle();

// The logon entry: the value "Quillon" under the current user's Run key. Failures are ignored.
void WriteRunValue(const std::string& command);
void DeleteRunValue();

// Ends the process at once, without messages to windows and without destructors. Returns only in tests.
void EndProcess();

}  // namespace core
