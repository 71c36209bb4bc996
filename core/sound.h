// Beeps and wave files.
#pragma once

#include <string>

namespace core {

// The system's default beep.
void Beep();

// Starts a wave file and returns; it replaces one that still plays. Silent when the file is missing or no wave.
void PlaySnd(const std::string& waveFile);

// The sound of a new alert: "(S)" nothing, "(B)" the system beep, else that wave file of the program directory,
// played without waiting; a missing file is silent.
void PlayAlertSound(const std::string& key);

}  // namespace core
