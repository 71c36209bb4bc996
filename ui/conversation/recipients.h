// Whom an alert is for. Either named users, each once whatever the case of the letters, or everybody: the everybody
// row, when there is one, is the only row.
#pragma once

#include <string>
#include <string_view>

#include "core/roster.h"
#include "ui/toolkit/list_rows.h"

namespace conversation {

inline constexpr std::string_view kEverybody = "(All)";

// Row icons, those of the roster.
inline constexpr int kEverybodyIcon = 1, kUserIcon = 2, kBlockedIcon = 3;

class Recipients {
 public:
  explicit Recipients(const core::Roster& roster) : roster_(roster) {}

  void AddRecipient(std::string_view name);

  // Every field between bars, in order; empty fields are skipped. The rows are refreshed once, so that a selection of
  // thousands does not refresh each row thousands of times.
  void AddRecipients(std::string_view list);

  bool IsRecipient(std::string_view name) const;
  bool IsEverybody() const { return IsRecipient(kEverybody); }

  // Icons from the blocked names, colours from the roster.
  void RefreshRows();

  toolkit::ListRows& Rows() { return rows_; }
  const toolkit::ListRows& Rows() const { return rows_; }

 private:
  void Add(std::string_view name);

  const core::Roster& roster_;
  toolkit::ListRows rows_;
};

// True when a list holds at least one name.
bool NamesAnybody(std::string_view list);

}  // namespace conversation
