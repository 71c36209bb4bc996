// What the options dialog makes of names that are typed into it.
#pragma once

#include <string>
#include <string_view>

#include "core/roster.h"

namespace options {

// The text that refuses a screen name, 0 when the name is fine.
inline constexpr int kNameInUseText = 2204, kNameUnusableText = 2205;

// Judges a trimmed screen name. The name must be free, hold a letter A-Z or a digit (so that it can be seen and typed
// everywhere), and no vertical bar, which parts the fields of a packet. While the present name is another user's
// (`ownNameIsTaken`, the conflict at start-up) one row of a name is enough to refuse it; else the own row does not
// count.
int RefusalOf(std::string_view name, const core::Roster& users, bool ownNameIsTaken);

// The first character in upper case, the rest in lower case: "jOHN smITH" becomes "John smith".
std::string ProperCase(std::string_view name);

}  // namespace options
