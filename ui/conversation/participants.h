// Who takes part in a conversation: the receive list of a chat window. Everybody, "(All)", is a participant among
// others.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/roster.h"
#include "net/messenger.h"
#include "ui/toolkit/list_rows.h"

namespace conversation {

class Participants {
 public:
  // `online` are the rows of the main window's list.
  Participants(const core::Roster& roster, const toolkit::ListRows& online) : roster_(roster), online_(online) {}

  // At the end, unless present; logged.
  void AddUser(std::string_view name);

  // Every name between bars. Empty ones do not count, unless there is nobody else: a stranger may call himself so.
  void AddUsers(std::string_view list);

  // Takes a participant out, if present; logged.
  void RemoveUser(std::string_view name);

  // Every one of these.
  void RemoveUsers(const std::vector<std::string>& names);

  bool IsUserPresent(std::string_view name) const;

  // Whether the lines of this sender belong here.
  bool Takes(std::string_view sender) const;

  // The icon of every participant anew: everybody, present, or absent or blocked. A comparison when neither the
  // participants nor the main window's list have changed since.
  void RefUserList();

  // A line to everybody when everybody takes part, else to each participant; to nobody when there is none.
  void Send(std::string_view line, net::Messenger& messenger) const;

  // " 2 users in this chat", in the language of the day.
  std::string CountsText() const;

  toolkit::ListRows& Rows() { return rows_; }
  const toolkit::ListRows& Rows() const { return rows_; }

 private:
  struct Changes {
    std::uint64_t own = 0, onlineSet = 0, onlineLook = 0;
    friend bool operator==(const Changes&, const Changes&) = default;
  };

  bool Add(std::string_view name);
  bool Remove(std::string_view name);
  int IconOf(std::string_view name) const;
  Changes Now() const { return {rows_.MembershipRevision(), online_.MembershipRevision(), online_.LookRevision()}; }

  const core::Roster& roster_;
  const toolkit::ListRows& online_;
  toolkit::ListRows rows_;
  Changes seen_;
};

// lstUsers: the names that a chat window offers for adding.
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
