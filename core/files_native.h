// What only native builds can do with files: stand in a folder of their own.
#pragma once

#include <string>

namespace core {

// From now on ProgramDirectory() is this folder; before that it is the one of the running program.
void SetProgramDirectory(std::string folder);

}  // namespace core
