// What the user has chosen in the options dialog, and how it becomes the settings of the program.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/program.h"
#include "ui/options/groups.h"

namespace options {

// Where nothing is selected the setting stays as it is.
struct Choices {
  std::optional<std::string> language{};
  std::string name{};
  std::optional<std::int32_t> colour{};
  std::optional<std::int16_t> position{};
  std::optional<std::string> sound{};
  std::int16_t runAtLogon = 0;
  std::vector<std::string> blocked{};
  std::vector<Group> groups{};
};

// Puts the choices into effect: leaves the network under the old name and joins it under the new one, fills the blocked
// and the group lists of the main window, and saves the settings. A network that cannot be joined is told in a box and
// stops nothing else. Throws the file's error when the settings cannot be saved; they are in effect then, and the file
// is the old one.
void Apply(const Choices& choices, core::Program& program);

}  // namespace options
