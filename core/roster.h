// The interface of the roster for the layers below the windows: users seen on the network, groups, and blocked senders.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace core {

class Roster {
 public:
  virtual ~Roster() = default;

  // Whether a row has exactly this text (case-sensitive), the "(All)" row and group rows included.
  virtual bool HasRow(std::string_view text) const = 0;

  // The number of rows, of any kind, with this text, ignoring case.
  virtual int CountRows(std::string_view text) const = 0;

  // The number of users listed, including the local one.
  virtual std::size_t CountUsers() const = 0;

  // Adds a user: checked, colour 0. Throws Err::KeyNotUnique when the name is listed in another case. Returns false,
  // and adds nothing, when the roster is full.
  virtual bool AddUser(std::string_view name) = 0;

  // Act on the first row with exactly this text; nothing happens when there is none.
  virtual void SetColour(std::string_view name, std::int32_t colour) = 0;
  virtual void SetStateText(std::string_view name, std::string_view stateText) = 0;
  virtual void RemoveRow(std::string_view name) = 0;

  // The colour of the first row with this name, ignoring case; 0 when there is none.
  virtual std::int32_t GetColorForUName(std::string_view name) const = 0;

  // Removes all rows and adds the "(All)" row.
  virtual void ClearlvUsers() = 0;

  // Rebuilds the group rows, at the end of the list, from the group lines.
  virtual void RefGroups() = 0;

  // Updates the icons of blocked users, then calls UpdateStat and refreshes the chat windows' user lists.
  virtual void RefBlock() = 0;

  // Updates the counts text under the list.
  virtual void UpdateStat() = 0;

  // Blocked names in the order of blocking. AddBlocked calls RefBlock.
  virtual bool IsBlocked(std::string_view name) const = 0;
  virtual void AddBlocked(std::string_view name) = 0;
  virtual const std::vector<std::string>& BlockedNames() const = 0;
  virtual void ClearBlockedNames() = 0;  // does not call RefBlock

  // Group lines: "name|member|member|". Changing them does not touch the rows until RefGroups.
  virtual const std::vector<std::string>& GroupLines() const = 0;
  virtual void SetGroupLines(std::vector<std::string> lines) = 0;
};

}  // namespace core
