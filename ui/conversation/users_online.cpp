#include "ui/conversation/users_online.h"

#include <utility>

#include "ui/conversation/recipients.h"

namespace conversation {

std::vector<std::size_t> GroupsOf(std::size_t names) {
  const std::size_t count = names <= kMaxInMenu ? 1 : (names + kInGroup - 1) / kInGroup;
  std::vector<std::size_t> groups;
  for (std::size_t i = 0; i < count; ++i) groups.push_back(i * names / count);
  return groups;
}

bool UsersOnline::Take(const toolkit::ListRows& online) {
  if (seen_ == online.MembershipRevision()) return false;
  seen_ = online.MembershipRevision();
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
