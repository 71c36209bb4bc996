// The process and the user it runs for.
#pragma once

#include <string>

namespace core {

inline constexpr char kProgramName[] = "Quillon";

// The name of the logged-on user, empty when the system does not tell it.
std::string GetLogonName();

// True when another copy already runs for the same user. From the first call on this copy is the one that runs.
bool AnotherCopyRuns();

// The program's file name without its extension.
std::string ProgramFileTitle();

// Ends the process at once: no window hears of it, no destructor runs. Returns only in a test's recorder.
void EndProcess();

}  // namespace core
