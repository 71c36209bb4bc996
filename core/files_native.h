// The program directory of native builds, which tests can set.
#pragma once

#include <string>

namespace core {

// Overrides ProgramDirectory(), which is the folder of the running program by default.
void SetProgramDirectory(std::string folder);

}  // namespace core
