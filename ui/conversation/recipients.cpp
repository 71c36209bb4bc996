#include "ui/conversation/recipients.h"

#include <algorithm>

#include "core/text.h"

namespace conversation {

void Recipients::AddRecipient(std::string_view name) {
  Add(name);
  RefreshRows();
}

void Recipients::AddRecipients(std::string_view list) {
  for (const std::string_view name : core::BarFields(list))
    if (!name.empty()) Add(name);
  RefreshRows();
}

bool Recipients::IsRecipient(std::string_view name) const { return rows_.FindKey(core::LowerCase(name)) != nullptr; }

void Recipients::Add(std::string_view name) {
  if (IsRecipient(name) || IsEverybody()) return;
  toolkit::ListRow row;
  row.key = core::LowerCase(name);
  row.text = name;
  row.icon = row.smallIcon = toolkit::kEverybodyIcon;
  core::EqualIgnoringCase(name, toolkit::kEverybody) ? rows_.ReplaceAll(std::move(row)) : rows_.Add(std::move(row));
}

void Recipients::RefreshRows() {
  const bool everybody = IsEverybody();
  for (std::size_t i = 0; i < rows_.Count(); ++i) {
    const toolkit::ListRow& row = rows_.At(i);
    const toolkit::RowIcon user = roster_.IsBlocked(row.text) ? toolkit::kBlockedIcon : toolkit::kUserIcon;
    rows_.SetIcon(row, everybody ? toolkit::kEverybodyIcon : user);
    rows_.SetForeColour(row, roster_.GetColorForUName(row.text));
  }
}

bool NamesAnybody(std::string_view list) {
  return std::ranges::any_of(core::BarFields(list), [](std::string_view name) { return !name.empty(); });
}

}  // namespace conversation
