// lstUsers: the names that a chat window offers for adding.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ui/toolkit/list_rows.h"

namespace conversation {

// So many names are offered in one menu. More are grouped into sub-menus of about kInGroup.
inline constexpr std::size_t kMaxInMenu = 500, kInGroup = 100;

// Where each of the groups begins that so many names are offered in; one when they are few.
std::vector<std::size_t> GroupsOf(std::size_t names);

class UsersOnline {
 public:
  // Takes the names of the main window's list in its order: every user and everybody, but no group. True when they are
  // not those that were there before. A comparison when that list has not changed since.
  bool Take(const toolkit::ListRows& online);

  const std::vector<std::string>& Names() const { return lstUsers; }

 private:
  std::vector<std::string> lstUsers;
  std::optional<std::uint64_t> seen_;
};

}  // namespace conversation
