// Who takes part: the participants of a chat window, and the recipients of an alert.
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
#include "ui/toolkit/roster_rows.h"

namespace conversation {

// The receive list of a chat window. "(All)" may be one of them.
class Participants {
 public:
  // `online` are the rows of the main window's list.
  Participants(const core::Roster& roster, const toolkit::ListRows& online) : roster_(roster), online_(online) {}

  // Appends a participant, unless present, and logs it.
  void AddUser(std::string_view name);

  // Adds all names between bars. Empty ones are skipped unless there is no other: a user may have an empty name.
  void AddUsers(std::string_view list);

  // Removes a participant, if present, and logs it.
  void RemoveUser(std::string_view name);

  // Every one of these.
  void RemoveUsers(const std::vector<std::string>& names);

  bool IsUserPresent(std::string_view name) const;

  // Whether lines of this sender are shown here.
  bool Takes(std::string_view sender) const;

  // Updates the icons of all participants: everybody, online, or offline or blocked. Only compares counters when
  // nothing has changed.
  void RefUserList();

  // Sends a line to everybody if "(All)" is a participant, otherwise to each participant.
  void Send(std::string_view line, net::Messenger& messenger) const;

  // " 2 users in this chat", in the current language.
  std::string CountsText() const;

  toolkit::ListRows& Rows() { return rows_; }
  const toolkit::ListRows& Rows() const { return rows_; }

 private:
  struct Changes {
    std::uint64_t own = 0, onlineMembership = 0, onlineAppearance = 0;
    friend bool operator==(const Changes&, const Changes&) = default;
  };

  void AddAll(const std::vector<std::string_view>& names);
  bool Add(std::string_view name);
  bool Remove(std::string_view name);
  int IconOf(std::string_view name) const;
  Changes Now() const {
    return {rows_.MembershipRevision(), online_.MembershipRevision(), online_.AppearanceRevision()};
  }

  const core::Roster& roster_;
  const toolkit::ListRows& online_;
  toolkit::ListRows rows_;
  Changes seen_;
};

// The limit of names in one menu. More are grouped into sub-menus of about kInGroup.
inline constexpr std::size_t kMaxInMenu = 500, kInGroup = 100;

// The first index of each group for this number of names; a single group when there are few.
std::vector<std::size_t> GroupsOf(std::size_t names);

// lstUsers: the names that a chat window offers for adding.
class UsersOnline {
 public:
  // Takes over the names of the main window's list, in its order and without groups. True when they have changed. Only
  // compares counters when that list has not changed.
  bool Take(const toolkit::ListRows& online);

  const std::vector<std::string>& Names() const { return lstUsers; }

 private:
  std::vector<std::string> lstUsers;
  std::optional<std::uint64_t> seen_;
};

// The recipients of an alert: either users, each once ignoring case, or everybody, in which case "(All)" is the only
// row.
class Recipients {
 public:
  explicit Recipients(const core::Roster& roster) : roster_(roster) {}

  void AddRecipient(std::string_view name);

  // Adds all names between bars, in order; empty ones are skipped. Updates the rows once, so that a selection of
  // thousands does not take quadratic time.
  void AddRecipients(std::string_view list);

  bool IsRecipient(std::string_view name) const;
  bool IsEverybody() const { return IsRecipient(toolkit::kEverybody); }

  // Updates icons from the blocked names and colours from the roster.
  void RefreshRows();

  toolkit::ListRows& Rows() { return rows_; }
  const toolkit::ListRows& Rows() const { return rows_; }

 private:
  void Add(std::string_view name);

  const core::Roster& roster_;
  toolkit::ListRows rows_;
};

// Whether a list has at least one name.
bool NamesAnybody(std::string_view list);

}  // namespace conversation
