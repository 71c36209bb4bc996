// The roster of the main window: everybody heard on the network, the groups, and the blocked senders. lvUsers is the
// one place where it lives; the main window's list view displays these rows and keeps none of its own.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "core/roster.h"
#include "core/text.h"
#include "ui/toolkit/list_rows.h"
#include "ui/toolkit/status_line.h"

namespace mainwindow {

// The row, and the recipient, that stands for every user.
inline constexpr std::string_view kEverybody = "(All)";

// The icon of a row tells its kind.
enum RowIcon : int { kEverybodyIcon = 1, kUserIcon = 2, kBlockedIcon = 3, kGroupIcon = 4 };

// A row, or a recipient, whose text begins so is no user.
constexpr bool IsNoUser(std::string_view text) { return text.starts_with('('); }

class UserRoster : public core::Roster {
 public:
  // Newcomers beyond these bounds are not listed, so that a flood of invented names cannot fill the memory. The bytes
  // bound long names only: a few giants must not shut everybody else out.
  static constexpr std::size_t kMaxRows = 100000, kMaxTextBytes = 32 * 1024 * 1024, kLongName = 255;

  toolkit::ListRows lvUsers;
  toolkit::StatusLine lblStat;

  // Asks the chat windows to refresh their user lists. Called when rows have come, gone or changed their icon.
  std::function<void()> refreshChatWindows;

  bool HasRow(std::string_view text) const override { return lvUsers.FindText(text) != nullptr; }
  int CountRows(std::string_view text) const override;
  std::size_t CountUsers() const override;
  bool AddUser(std::string_view name) override;
  void SetColour(std::string_view name, std::int32_t colour) override;
  void SetStateText(std::string_view name, std::string_view stateText) override;
  void RemoveRow(std::string_view name) override;
  std::int32_t GetColorForUName(std::string_view name) const override;

  void ClearlvUsers() override;
  void RefGroups() override;
  void RefBlock() override;
  void UpdateStat() override;

  bool IsBlocked(std::string_view name) const override { return blocked_.contains(name); }
  void AddBlocked(std::string_view name) override;
  const std::vector<std::string>& BlockedNames() const override { return lstBlock; }
  void ClearBlockedNames() override;

  const std::vector<std::string>& GroupLines() const override { return lstGroups; }
  void SetGroupLines(std::vector<std::string> lines) override { lstGroups = std::move(lines); }

  // The present members of a group, each followed by a bar, in the order of the group's line and spelled as in the
  // roster. The name may stand in its row's parentheses. The last group line is deliberately ignored, for
  // compatibility.
  std::string GetActiveGroupList(std::string_view name) const;

  // The selected rows as a recipient list: names, each followed by a bar; a group row stands for its present members.
  std::string SelectedRecipients() const;

  void RemoveBlock(std::string_view name);

  // Blocks every selected user who is not blocked, and unblocks the others.
  void ToggleBlock();

 private:
  struct Counted {
    std::size_t rows = 0, groups = 0, blocked = 0;
    unsigned language = 0;
    friend bool operator==(const Counted&, const Counted&) = default;
  };

  int IconOf(std::string_view user) const { return !IsNoUser(user) && IsBlocked(user) ? kBlockedIcon : kUserIcon; }
  void MarkRows(std::string_view user);
  void MarkAllRows();
  std::string CountsText() const;
  std::vector<const toolkit::ListRow*> SelectedRows() const;

  std::vector<std::string> lstGroups, lstBlock;
  std::unordered_set<std::string, core::NameHash, core::NameEqual> blocked_;  // the names of lstBlock
  std::size_t groupRows_ = 0;
  bool marksAreStale_ = false;

  // What the counts text and the chat windows were last made from.
  std::optional<Counted> counted_;
  std::string counts_;
  std::uint64_t toldSet_ = 0, toldIcons_ = 0;
};

}  // namespace mainwindow
