// The entry point, called by the system-specific main().
#pragma once

#include <string>
#include <vector>

namespace cli {

// Takes the arguments in UTF-8, without the program's name; returns the exit code.
int Main(const std::vector<std::string>& arguments);

}  // namespace cli
