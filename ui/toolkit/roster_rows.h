// What the rows of users have in common, in the roster and in every list of its names.
#pragma once

#include <string>
#include <string_view>

#include "res/pictures.h"

namespace toolkit {

// The row, and the recipient, that means all users.
inline constexpr std::string_view kEverybody = "(All)";

// A list of recipients with this row alone.
inline std::string EverybodyList() { return std::string(kEverybody) + "|"; }

// The icon identifies the kind of a row. Counted from 1, the pictures from 0.
enum RowIcon : int {
  kEverybodyIcon = res::kRosterEverybody + 1,
  kUserIcon = res::kRosterUser + 1,
  kBlockedIcon = res::kRosterBlocked + 1,
  kGroupIcon = res::kRosterGroup + 1
};

// Whether the text of a row, or a recipient, means several users: all, or a group.
constexpr bool IsSpecialRow(std::string_view text) { return text.starts_with('('); }

}  // namespace toolkit
