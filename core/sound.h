// Beeps and wave files.
#pragma once

#include <string>

namespace core {

// The system's default beep.
void Beep();

// Plays a wave file asynchronously, stopping the one that plays. Silent when the file is missing or invalid.
void PlaySnd(const std::string& waveFile);

// Plays the sound of a new alert: nothing for "(S)", the system beep for "(B)", else a wave file of the program
// directory.
void PlayAlertSound(const std::string& key);

}  // namespace core
