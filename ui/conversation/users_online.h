// lstUsers: the names that a chat window offers for adding.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ui/toolkit/list_rows.h"

namespace conversation {

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
