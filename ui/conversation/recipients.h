// The recipients of an alert: either users, each once ignoring case, or everybody, in which case "(All)" is the only
// row.
#pragma once

#include <string>
#include <string_view>

#include "core/roster.h"
#include "ui/toolkit/list_rows.h"
#include "ui/toolkit/roster_rows.h"

namespace conversation {

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
