// Start-up and shutdown.
#pragma once

#include <cstdint>
#include <string_view>

#include "core/program.h"

namespace core {

// Starts the program: refuses a second copy, loads settings and language, listens to the network for ten seconds,
// checks the screen name and joins. `arguments` is the command line without the program's path. A failure is logged and
// shown; what was loaded stays.
void Main(Program& program, std::string_view arguments);

// Saves the settings, leaves the network, removes the icon, updates the logon entry, logs, and ends the process. A
// re-entrant call does nothing. When the settings cannot be saved, shows the error, removes the icon and ends the
// process.
void ShutDown(Program& program);

// True when another copy uses the name: at least one row has it, ignoring case, or at least two when it is exactly the
// current name of this copy.
bool NameInUse(const Roster& roster, std::string_view name);

// True when the text contains "safe", in any case.
bool AsksForSafeMode(std::string_view arguments);

// 0 removes the logon entry, 1 writes it (program directory, "\", file name without extension, no quotes); other values
// are ignored.
void SetRunAtLogon(std::int16_t flag);

// Stores the current tick count in gTicks.
void StartTicks();

// Milliseconds since `start`; throws as TicksBetween does.
std::int32_t ElapsedTicks(std::int32_t start);

// Milliseconds between two tick counts. Throws Err::Overflow when they do not fit in a signed 32-bit number, which
// happens across the wrap of the count: 24.9 days after the system's start, and every 49.7 days from then on.
std::int32_t TicksBetween(std::int32_t start, std::int32_t now);

// Duration of the listening, milliseconds.
inline constexpr int kListenTime = 10000;

// Size of the first chat window of a run, which opens centred; twips.
inline constexpr int kChatWidth = 2500, kChatHeight = 3800;

}  // namespace core
