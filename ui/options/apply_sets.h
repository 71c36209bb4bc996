// How accepted options take effect.
#pragma once

#include <functional>

#include "core/program.h"

namespace options {

// Write the accepted settings into the globals and the roster.
struct SetsWriters {
  std::function<void()> language;
  std::function<void()> user;  // name and colour
  std::function<void()> others;
};

// Leaves the network under the old name, clears the list of users, joins under the new name, and saves everything. A
// failure to join is reported in a message box, and the rest is still done. Throws the file's error when the settings
// cannot be saved; they are in effect then.
void ApplySets(core::Program& program, const SetsWriters& write);

}  // namespace options
