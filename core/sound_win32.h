// Wave files.
#pragma once

#include <string>

namespace core {

// Starts a wave file and returns; it replaces one that still plays. Silent when the file is missing or no wave.
void PlaySnd(const std::string& waveFile);

}  // namespace core
