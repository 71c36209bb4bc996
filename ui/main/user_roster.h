// The roster of the main window: users seen on the network, groups, and blocked senders. Stored in lvUsers only; the
// main window's list view is a virtual view of it.
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

class UserRoster : public core::Roster {
 public:
  // Limits against a flood of invented names. The limit in bytes applies to long names only, so that a few of them
  // cannot keep everybody else from being listed.
  static constexpr std::size_t kMaxRows = 100000, kMaxTextBytes = 32 * 1024 * 1024, kLongName = 255;

  toolkit::ListRows lvUsers;
  toolkit::StatusLine lblStat;

  // Called when rows were added, removed or changed their icon, to refresh the user lists of chat windows.
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

  // The members of a group who are online, each followed by a bar, in the order of the group's line and spelled as in
  // the roster. The name may be in parentheses, as in its row. The last group line is deliberately ignored, for
  // compatibility.
  std::string GetActiveGroupList(std::string_view name) const;

  // The selected rows as a recipient list: names, each followed by a bar, with groups replaced by their members online.
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

  int IconOf(std::string_view user) const;
  void MarkRows(std::string_view user);
  void MarkAllRows();
  std::string CountsText() const;

  std::vector<std::string> lstGroups, lstBlock;
  std::unordered_set<std::string, core::NameHash, core::NameEqual> blocked_;  // the names of lstBlock
  std::size_t groupRows_ = 0;
  bool marksAreStale_ = false;

  // The state that the counts text and the chat windows were last updated from.
  std::optional<Counted> counted_;
  std::string counts_;
  std::uint64_t notifiedMembership_ = 0, notifiedIcons_ = 0;
};

}  // namespace mainwindow
