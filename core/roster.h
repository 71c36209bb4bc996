// The roster of the main window, as everything below the windows sees it: users heard on the network, groups, and
// blocked senders.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace core {

class Roster {
 public:
  virtual ~Roster() = default;

  // Looks for a row with exactly this text (case counts), the everybody row and group rows included.
  virtual bool HasRow(std::string_view text) const = 0;

  // How many rows, of any kind, bear this text ignoring case.
  virtual int CountRows(std::string_view text) const = 0;

  // How many users are listed, the own name included.
  virtual std::size_t CountUsers() const = 0;

  // Adds a user: checked, colour 0. Throws Err::KeyNotUnique when a user of this name in another case is listed.
  // Returns false, and adds nothing, when the roster has reached its bounds.
  virtual bool AddUser(std::string_view name) = 0;

  // Act on the first row with exactly this text; nothing happens when there is none.
  virtual void SetColour(std::string_view name, std::int32_t colour) = 0;
  virtual void SetStateText(std::string_view name, std::string_view stateText) = 0;
  virtual void RemoveRow(std::string_view name) = 0;

  // The colour of the first row with this name, ignoring case; 0 when there is none.
  virtual std::int32_t GetColorForUName(std::string_view name) const = 0;

  // Empties the roster and adds the everybody row.
  virtual void ClearlvUsers() = 0;

  // Rebuilds the group rows, at the end of the list, from the group lines.
  virtual void RefGroups() = 0;

  // Gives every user row the icon of its blocked state, then UpdateStat and the chat windows' user lists.
  virtual void RefBlock() = 0;

  // Recomputes the counts text under the list.
  virtual void UpdateStat() = 0;

  // Blocked names in the order of blocking; each change ends in RefBlock.
  virtual bool IsBlocked(std::string_view name) const = 0;
  virtual void AddBlocked(std::string_view name) = 0;
  virtual const std::vector<std::string>& BlockedNames() const = 0;
  virtual void ClearBlockedNames() = 0;  // the list alone: no RefBlock

  // Group lines: "name|member|member|". Changing them does not touch the rows until RefGroups.
  virtual const std::vector<std::string>& GroupLines() const = 0;
  virtual void SetGroupLines(std::vector<std::string> lines) = 0;
};

}  // namespace core
