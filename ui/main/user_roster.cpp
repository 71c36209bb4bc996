#include "ui/main/user_roster.h"

#include <algorithm>
#include <utility>

#include "core/language.h"
#include "core/text.h"
#include "ui/toolkit/roster_rows.h"

namespace mainwindow {
namespace {

using toolkit::IsSpecialRow, toolkit::kEverybody;

constexpr std::string_view kEverybodyKey = "G";  // cannot be a user's key, which is in lower case
constexpr int kCountsText = 1201;

}  // namespace

int UserRoster::CountRows(std::string_view text) const { return static_cast<int>(lvUsers.AllWithText(text).size()); }

std::size_t UserRoster::CountUsers() const {
  const std::size_t others = groupRows_ + 1;
  return std::max(lvUsers.Count(), others) - others;  // a user named like a group row can make the count too small
}

// Sets the correct icon at once, so that a newcomer does not need an update of all rows.
bool UserRoster::AddUser(std::string_view name) {
  if (lvUsers.Count() >= kMaxRows) return false;
  if (name.size() > kLongName && lvUsers.TextBytes() + 2 * name.size() > kMaxTextBytes) return false;
  const int icon = IconOf(name);
  lvUsers.Add(
      {.text = std::string(name), .icon = icon, .smallIcon = icon, .checked = true, .key = core::LowerCase(name)});
  return true;
}

void UserRoster::SetColour(std::string_view name, std::int32_t colour) {
  if (const auto* row = lvUsers.FindText(name)) lvUsers.SetForeColour(*row, colour);
}

void UserRoster::SetStateText(std::string_view name, std::string_view stateText) {
  if (const auto* row = lvUsers.FindText(name)) lvUsers.SetSubText(*row, stateText);
}

void UserRoster::RemoveRow(std::string_view name) {
  if (const auto* row = lvUsers.FindText(name)) lvUsers.Remove(*row);
}

std::int32_t UserRoster::GetColorForUName(std::string_view name) const {
  const auto* row = lvUsers.FindTextIgnoringCase(name);
  return row ? row->foreColour : 0;
}

void UserRoster::ClearlvUsers() {
  lvUsers.ReplaceAll({.text = std::string(kEverybody),
                      .icon = toolkit::kEverybodyIcon,
                      .smallIcon = toolkit::kEverybodyIcon,
                      .key = std::string(kEverybodyKey)});
  groupRows_ = 0;
  UpdateStat();
}

void UserRoster::RefGroups() {
  std::vector<const toolkit::ListRow*> groups;
  for (std::size_t i = 0; i < lvUsers.Count(); ++i)
    if (lvUsers.At(i).icon == toolkit::kGroupIcon) groups.push_back(&lvUsers.At(i));
  for (const auto* row : groups) lvUsers.Remove(*row);
  groupRows_ = 0;
  for (const std::string& line : lstGroups) {
    std::string text = std::string("(").append(core::BarField(line, 0)).append(")");
    lvUsers.Add({.text = std::move(text), .icon = toolkit::kGroupIcon, .smallIcon = toolkit::kGroupIcon});
    ++groupRows_;
  }
}

// Runs on every packet. Block and unblock update icons incrementally; only clearing the list needs a full pass.
void UserRoster::RefBlock() {
  if (marksAreStale_) MarkAllRows();
  UpdateStat();
  if (notifiedMembership_ == lvUsers.MembershipRevision() && notifiedIcons_ == lvUsers.IconRevision()) return;
  notifiedMembership_ = lvUsers.MembershipRevision();
  notifiedIcons_ = lvUsers.IconRevision();
  if (refreshChatWindows) refreshChatWindows();
}

int UserRoster::IconOf(std::string_view user) const {
  return !IsSpecialRow(user) && IsBlocked(user) ? toolkit::kBlockedIcon : toolkit::kUserIcon;
}

void UserRoster::MarkRows(std::string_view user) {
  if (IsSpecialRow(user)) return;
  const bool stale = std::exchange(marksAreStale_, true);  // stays set if the lookup throws
  for (const auto* row : lvUsers.AllWithText(user)) lvUsers.SetIcon(*row, IconOf(user));
  marksAreStale_ = stale;
}

void UserRoster::MarkAllRows() {
  marksAreStale_ = false;
  for (std::size_t i = 0; i < lvUsers.Count(); ++i) {
    const toolkit::ListRow& row = lvUsers.At(i);
    if (!IsSpecialRow(row.text)) lvUsers.SetIcon(row, IconOf(row.text));
  }
}

// Runs on every packet. Replaces a help text that is being shown, too.
void UserRoster::UpdateStat() {
  const Counted now{lvUsers.Count(), lstGroups.size(), lstBlock.size(), core::LanguageGeneration()};
  if (counted_ != now) {
    counts_ = CountsText();
    counted_ = now;
  }
  lblStat.SetCounts(counts_);
}

// Subtracts the "(All)" row and one row per group line, even if not listed, so the result may be too low or negative.
std::string UserRoster::CountsText() const {
  const auto users = static_cast<std::int64_t>(lvUsers.Count()) - static_cast<std::int64_t>(lstGroups.size()) - 1;
  return toolkit::CountText(core::GetText(kCountsText), users) + " (-" + std::to_string(lstBlock.size()) + ")";
}

void UserRoster::AddBlocked(std::string_view name) {
  if (!IsBlocked(name)) {
    if (lstBlock.size() == lstBlock.capacity()) lstBlock.reserve(2 * lstBlock.size() + 1);
    std::string listed(name);
    blocked_.emplace(name);
    lstBlock.push_back(std::move(listed));
    MarkRows(name);
  }
  RefBlock();
}

void UserRoster::RemoveBlock(std::string_view name) {
  const std::string removed(name);  // a copy: the view may refer to the removed entry
  if (const auto entry = blocked_.find(removed); entry != blocked_.end()) {
    blocked_.erase(entry);
    std::erase_if(lstBlock, [&](const std::string& blocked) { return core::EqualIgnoringCase(blocked, removed); });
    MarkRows(removed);
  }
  RefBlock();
}

void UserRoster::ClearBlockedNames() {
  marksAreStale_ = marksAreStale_ || !lstBlock.empty();
  lstBlock.clear();
  blocked_.clear();
}

std::string UserRoster::GetActiveGroupList(std::string_view name) const {
  if (IsSpecialRow(name)) name = name.substr(1, std::max<std::size_t>(name.size(), 2) - 2);
  std::string present;
  for (std::size_t i = 0; i + 1 < lstGroups.size(); ++i) {
    if (core::BarField(lstGroups[i], 0) != name) continue;
    const auto fields = core::BarFields(lstGroups[i]);
    for (std::size_t member = 1; member < fields.size(); ++member)
      for (const auto* row : lvUsers.AllWithText(fields[member])) present.append(row->text).append(1, '|');
    break;
  }
  return present;
}

std::string UserRoster::SelectedRecipients() const {
  std::string recipients;
  for (const auto* row : lvUsers.Selected()) {
    if (IsSpecialRow(row->text) && row->text != kEverybody)
      recipients.append(GetActiveGroupList(row->text));
    else
      recipients.append(row->text).append(1, '|');
  }
  return recipients;
}

void UserRoster::ToggleBlock() {
  for (const auto* row : lvUsers.Selected()) {
    if (IsSpecialRow(row->text)) continue;
    if (IsBlocked(row->text))
      RemoveBlock(row->text);
    else
      AddBlocked(row->text);
  }
  UpdateStat();
  if (refreshChatWindows) refreshChatWindows();
}

}  // namespace mainwindow
