#include "ui/conversation/participants.h"

#include <algorithm>
#include <utility>

#include "core/language.h"
#include "core/log.h"
#include "core/text.h"
#include "net/packet.h"
#include "ui/toolkit/status_line.h"

namespace conversation {
namespace {

using toolkit::IsSpecialRow, toolkit::kBlockedIcon, toolkit::kEverybody, toolkit::kEverybodyIcon, toolkit::kUserIcon;

constexpr int kCountsText = 3201;

}  // namespace

void Participants::AddUser(std::string_view name) { AddAll({name}); }

void Participants::AddUsers(std::string_view list) {
  std::vector<std::string_view> names = core::BarFields(list);
  if (NamesAnybody(list)) std::erase(names, "");
  AddAll(names);
}

// Updates the icons once, so that a selection of thousands does not take quadratic time.
void Participants::AddAll(const std::vector<std::string_view>& names) {
  std::vector<std::string_view> added;
  for (const std::string_view name : names)
    if (Add(name)) added.push_back(name);
  RefUserList();
  for (const std::string_view name : added) core::WriteLog(std::string(name) + " Added to chat window");
}

bool Participants::Add(std::string_view name) {
  if (IsUserPresent(name)) return false;
  const int icon = IconOf(name);
  rows_.Add({.text = std::string(name), .icon = icon, .smallIcon = icon});
  return true;
}

void Participants::RemoveUser(std::string_view name) { RemoveUsers({std::string(name)}); }

void Participants::RemoveUsers(const std::vector<std::string>& names) {
  std::vector<const std::string*> removed;
  for (const std::string& name : names)
    if (Remove(name)) removed.push_back(&name);
  RefUserList();
  for (const std::string* name : removed) core::WriteLog(*name + " Removed from chat window");
}

bool Participants::Remove(std::string_view name) {
  const toolkit::ListRow* row = rows_.FindTextIgnoringCase(name);
  if (row) rows_.Remove(*row);
  return row != nullptr;
}

bool Participants::IsUserPresent(std::string_view name) const { return rows_.FindTextIgnoringCase(name) != nullptr; }

bool Participants::Takes(std::string_view sender) const { return IsUserPresent(sender) || IsUserPresent(kEverybody); }

int Participants::IconOf(std::string_view name) const {
  if (core::EqualIgnoringCase(name, kEverybody)) return kEverybodyIcon;
  const bool present = online_.FindTextIgnoringCase(name) != nullptr;
  return present && !roster_.IsBlocked(name) ? kUserIcon : kBlockedIcon;
}

void Participants::RefUserList() {
  if (seen_ == Now()) return;
  for (std::size_t i = 0; i < rows_.Count(); ++i) rows_.SetIcon(rows_.At(i), IconOf(rows_.At(i).text));
  seen_ = Now();
}

void Participants::Send(std::string_view line, net::Messenger& messenger) const {
  const std::string marked = net::kChatMark + std::string(line);
  if (IsUserPresent(kEverybody)) return messenger.SendMsg(marked);
  for (std::size_t i = 0; i < rows_.Count(); ++i) messenger.SendPrivate(rows_.At(i).text + ' ' + marked);
}

std::string Participants::CountsText() const {
  return toolkit::CountText(core::GetText(kCountsText), static_cast<std::int64_t>(rows_.Count()));
}

std::vector<std::size_t> GroupsOf(std::size_t names) {
  const std::size_t count = names <= kMaxInMenu ? 1 : (names + kInGroup - 1) / kInGroup;
  std::vector<std::size_t> groups;
  for (std::size_t i = 0; i < count; ++i) groups.push_back(i * names / count);
  return groups;
}

bool UsersOnline::Take(const toolkit::ListRows& online) {
  if (seen_ == online.MembershipRevision()) return false;
  std::vector<std::string> names;
  for (std::size_t i = 0; i < online.Count(); ++i) {
    const std::string& text = online.At(i).text;
    if (!IsSpecialRow(text) || text == kEverybody) names.push_back(text);
  }
  seen_ = online.MembershipRevision();
  if (names == lstUsers) return false;
  lstUsers = std::move(names);
  return true;
}

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
