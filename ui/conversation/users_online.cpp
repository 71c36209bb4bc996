#include "ui/conversation/users_online.h"

#include <utility>

#include "ui/conversation/recipients.h"

namespace conversation {

bool UsersOnline::Take(const toolkit::ListRows& online) {
  if (seen_ == online.SetChanges()) return false;
  seen_ = online.SetChanges();
  std::vector<std::string> names;
  names.reserve(online.Count());
  for (std::size_t i = 0; i < online.Count(); ++i) {
    const std::string& text = online.At(i).text;
    if (!text.starts_with('(') || text == kEverybody) names.push_back(text);
  }
  if (names == lstUsers) return false;
  lstUsers = std::move(names);
  return true;
}

}  // namespace conversation
