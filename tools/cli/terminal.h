// Where the system starts the program.
#pragma once

#include <string>
#include <vector>

namespace cli {

// Arguments in UTF-8, without the program's name. Gives the exit code.
int Main(const std::vector<std::string>& arguments);

}  // namespace cli
