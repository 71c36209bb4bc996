// mnuUser: the users online as an array of menu entries.
#pragma once

#include <string>
#include <vector>

#include "ui/toolkit/menu/window_menu.h"

namespace conversation {

// Puts the names, the first of them when there are many, in place of those that stood before mnuRemove. Entry
// number i has the id mnuUser + i, so that a choice does not depend on what the caption shows of the name.
void FillUsersMenu(toolkit::WindowMenu& menu, const std::vector<std::string>& names);

}  // namespace conversation
