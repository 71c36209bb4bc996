// The way into the program and the single way out of it.
#pragma once

#include <string_view>

#include "core/program.h"

namespace core {

// Starts the program: refuses a second copy, reads settings and language, listens to the network for ten seconds,
// checks the screen name and joins. `arguments` is the command line without the program's own path. A failure is
// logged, shown, and leaves what was loaded as it is.
void Main(Program& program, std::string_view arguments);

// Saves the settings, leaves the network, removes the icon, sets the logon entry, logs and ends the process. A second
// call while it runs does nothing. When the settings cannot be saved the error is shown and the process ends without
// the remaining steps, but with the icon removed.
void ShutDown(Program& program);

// True when another copy uses the name: at least one row bears it, ignoring case; at least two when it is exactly the
// name that this copy already uses.
bool NameInUse(const Roster& roster, std::string_view name);

// True when the word "safe" stands anywhere in the text, in any case.
bool AsksForSafeMode(std::string_view arguments);

// Listening period, milliseconds.
inline constexpr int kListenTime = 10000;

// Size of the first chat window of a run, twips; it opens centred.
inline constexpr int kChatWidth = 2500, kChatHeight = 3800;

}  // namespace core
