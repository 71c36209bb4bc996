// Checks on the names that are typed into the options dialog, and their proper case.
#pragma once

#include <string>
#include <string_view>

#include "core/roster.h"

namespace options {

// The text that refuses a screen name, 0 when the name is fine.
inline constexpr int kNameInUseText = 2204, kNameUnusableText = 2205;

// Checks a trimmed screen name. It must not be in use, must contain a letter A-Z or a digit, so that it can be
// displayed and typed everywhere, and must not contain a vertical bar, which separates the fields of a packet. The
// user's own row does not count as a use of the name, unless the present name belongs to another user
// (`ownNameIsTaken`, the conflict at start-up).
int RefusalOf(std::string_view name, const core::Roster& users, bool ownNameIsTaken);

// The first character in upper case, the rest in lower case: "jOHN smITH" becomes "John smith".
std::string ProperCase(std::string_view name);

}  // namespace options
