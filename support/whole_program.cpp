#include "support/whole_program.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "core/clock.h"
#include "core/event_loop.h"
#include "core/files.h"
#include "core/globals.h"
#include "core/language.h"
#include "core/log.h"
#include "core/numbers.h"
#include "core/runtime_error.h"
#include "core/settings.h"
#include "core/text.h"
#include "support/memory_files.h"
#include "support/recording_desktop.h"
#include "ui/conversation/chat_export.h"
#include "ui/options/option_values.h"
#include "ui/toolkit/roster_rows.h"

namespace support {
namespace {

using toolkit::ListRow;
using toolkit::ListRows;

constexpr std::size_t kMaxOwn = 64;  // sent packets kept for HearOwn
constexpr int kCountsText = 1201;

// Checks that a list counts its rows correctly and finds each of them by every lookup.
std::string_view RowsViolation(const ListRows& rows) {
  std::size_t bytes = 0, selected = 0;
  const std::vector<toolkit::RowId> ids = rows.Ids();
  if (ids.size() != rows.Count()) return "the numbers of rows and ids differ";
  for (std::size_t i = 0; i < rows.Count(); ++i) {
    const ListRow& row = rows.At(i);
    if (rows.FindId(ids[i]) != &row) return "a row is not found by its id";
    if (!rows.FindText(row.text) || !rows.FindTextIgnoringCase(row.text)) return "a row is not found by its text";
    if (!row.key.empty() && rows.FindKey(row.key) != &row) return "two rows have the same key";
    bytes += row.text.size() + row.key.size();
    selected += row.selected ? 1 : 0;
  }
  if (bytes != rows.TextBytes() || selected != rows.SelectedCount()) return "a list's byte or selection count is wrong";
  return {};
}

bool IsKind(std::string_view kind, std::string_view wanted) { return core::EqualIgnoringCase(kind, wanted); }

bool IsText(std::string_view datagram) {
  const net::Packet packet = net::SplitPacket(datagram);
  return !packet.argument.empty() &&
         (net::IsKind(packet.kind, net::kPresence) || net::IsKind(packet.kind, net::kPrivate));
}

}  // namespace

PlainChat::PlainChat(const core::Roster& roster, const ListRows& online)
    : participants(roster, online), online_(online) {}

bool PlainChat::AddMsg(std::string_view text, std::string_view sender, std::int32_t colour) {
  if (!open || !participants.Takes(sender)) return false;
  said.Add({.prefix = {}, .sender = sender, .text = text, .colour = colour, .indent = {900}});
  return true;
}

void PlainChat::RemoveUser(std::string_view name) {
  if (open && participants.IsUserPresent(name)) participants.RemoveUser(name);
}

void PlainChat::RefUserList() {
  if (open) participants.RefUserList();
}

const std::vector<std::string>& PlainChat::Offered() {
  lstUsers_.Take(online_);
  return lstUsers_.Names();
}

void PlainChat::Export(const std::string& path) const {
  const conversation::MarkupStyle style{.font = "Tahoma", .maxIndent = {2000}, .paint = [](std::int32_t colour) {
                                          return std::optional(static_cast<std::uint32_t>(colour));
                                        }};
  core::WriteFileSafely(path, [&](const core::Sink& sink) {
    if (path.ends_with("txt")) return WritePlainText(said, sink);
    WriteMarkup(said, BeginOf(said), EndOf(said), style, sink);
  });
}

WholeProgram::WholeProgram() {
  users.refreshChatWindows = [this] {
    for (const auto& chat : chats) chat->RefUserList();
  };
}

void WholeProgram::LoadMain() {
  if (loaded_) return;
  users.ClearlvUsers();
  users.RefGroups();
  users.RefBlock();
  loaded_ = true;
}

// The text after the mark, if the packet is a chat line for this copy.
std::optional<std::string_view> WholeProgram::ChatLineIn(std::string_view datagram) const {
  const net::Packet packet = net::SplitPacket(datagram);
  std::string_view text;
  if (IsKind(packet.kind, net::kPresence)) text = packet.argument;
  if (IsKind(packet.kind, net::kPrivate)) {
    const net::PrivateText message = net::SplitPrivate(packet.argument);
    if (message.found && core::EqualIgnoringCase(message.recipient, core::gCurName)) text = message.text;
  }
  const bool shown = core::gStatus == 0 && !users.IsBlocked(packet.sender) && WouldBeListed(packet.sender);
  if (!shown || !text.starts_with(net::kChatMark)) return std::nullopt;
  return text.substr(1);
}

bool WholeProgram::WouldBeListed(std::string_view name) const {
  if (users.HasRow(name)) return true;
  if (name.starts_with(net::kHiddenMark) && !core::EqualIgnoringCase(name, core::gCurName)) return false;
  return name.empty() || !users.lvUsers.FindKey(core::LowerCase(name));
}

void WholeProgram::Hear(std::string_view datagram) {
  if (!open_) return;
  if (core::gDispatching) {
    ++waiting_;
    return dispatcher.DataArrived(datagram);
  }
  const bool isLine = ChatLineIn(datagram).has_value();
  const net::Packet packet = net::SplitPacket(datagram);
  std::vector<Expected> before;
  for (const auto& each : chats) {
    const auto& chat = static_cast<PlainChat&>(*each);
    before.push_back({each, chat.said.End(), isLine && chat.participants.Takes(packet.sender)});
  }
  const bool isBlockedNotice = IsKind(packet.kind, net::kNotice) && users.IsBlocked(packet.sender);
  const std::size_t boxes = Desktop().posted.size(), kept = HashOfKept();
  waiting_ = 0;
  dispatcher.DataArrived(datagram);
  CheckLines(before, isLine);
  // A box with a closing sentence is the log's, which could not be written.
  const bool boxPosted = Desktop().posted.size() > boxes && Desktop().posted.back().closing.empty();
  if (isBlockedNotice && boxPosted) violation_ = "a notice of a blocked user";
  if (HashOfKept() != kept) violation_ = "a packet changed a setting or a file";
}

// Of what no packet may change: settings, the user's lists, and all files but the log. Allocates nothing, since memory
// may fail here too.
std::size_t WholeProgram::HashOfKept() const {
  std::size_t hash = 0;
  const auto add = [&hash](std::string_view text) { hash = hash * 31 + std::hash<std::string_view>()(text); };
  core::VisitSettings(add);
  add(core::gCurName);
  for (const std::int16_t number : {core::gStatus, core::gSafe}) hash = hash * 31 + static_cast<std::size_t>(number);
  for (const auto* lines : {&users.BlockedNames(), &users.GroupLines()})
    for (const std::string& line : *lines) add(line);
  for (const auto& [path, bytes] : Files().files)
    if (!path.ends_with("Log.txt")) add(path), add(bytes);
  return hash;
}

// A line must arrive once in each window that takes it, or in a new window if none does.
void WholeProgram::CheckLines(const std::vector<Expected>& before, bool isLine) {
  std::size_t takers = 0;
  for (const Expected& expected : before) {
    const auto& chat = static_cast<PlainChat&>(*expected.chat);
    const std::size_t added = chat.said.End() - expected.lines, wanted = expected.takes ? 1 : 0;
    takers += wanted;
    if (added > wanted + waiting_) violation_ = "a line arrived twice, or in a window that does not take it";
    if (added < wanted && !mayLose) violation_ = "a line is lost";
  }
  const std::size_t opened = chats.size() - before.size(), maxOpened = (isLine && takers == 0 ? 1 : 0) + waiting_;
  if (opened > maxOpened) violation_ = "an unneeded window opened";
  const bool needed = isLine && takers == 0 && before.size() < kMaxChats;
  if (needed && opened == 0 && !mayLose) violation_ = "no window for a line";
  for (std::size_t i = before.size(); i < chats.size(); ++i) {
    const std::size_t added = Chat(i).said.End();
    if (added > 1 + waiting_ || (added == 0 && !mayLose && waiting_ == 0)) violation_ = "a new window with wrong lines";
  }
}

void WholeProgram::HearOwn() {
  std::deque<std::string> own;
  own.swap(own_);
  for (const std::string& datagram : own) Hear(datagram);
}

void WholeProgram::PassTime(std::uint32_t milliseconds) {
  Desktop().ticks = core::TicksAfter(Desktop().ticks, milliseconds);
  if (!open_ || !wakeAt_ || core::TicksSince(*wakeAt_, Desktop().ticks) > INT32_MAX) return;
  wakeAt_.reset();
  messenger.SendOwed();
}

bool WholeProgram::Accept(const Options& options) {
  if (options::RefusalOf(options.name, users, false) != 0) return false;
  if (options.loadsLanguage && options.language != core::gLanguage) {
    core::ChangeLang(options.language);
    core::LoadLangConsts();
  }
  const auto writeLanguage = [&options] { core::gLanguage = options.language; };
  const auto writeUser = [&options] {
    core::gUserName = core::gCurName = options.name;
    core::gColour = options.colour;
  };
  options::ApplySets(*this, {.language = writeLanguage, .user = writeUser, .others = [&] { WriteLists(options); }});
  return true;
}

void WholeProgram::WriteLists(const Options& options) {
  users.ClearBlockedNames();
  for (const std::string& name : options.blocked) users.AddBlocked(name);
  users.RefBlock();
  users.SetGroupLines(options.groupLines);
  users.RefGroups();
  users.UpdateStat();
}

void WholeProgram::SetStatus(std::int16_t status) {
  core::gStatus = status;
  messenger.SendState();
}

void WholeProgram::Block(const std::string& name) {
  users.AddBlocked(name);
  alerts_.Forget(name);
  if (composer) composer->RefreshRows();
}

PlainChat& WholeProgram::StartChat(std::string_view participants) {
  const auto chat = std::make_shared<PlainChat>(users, users.lvUsers);
  chat->participants.AddUsers(participants);
  chats.push_back(chat);
  core::RunPendingEvents();
  return *chat;
}

void WholeProgram::Close(std::size_t chat) {
  Chat(chat).open = false;
  chats.erase(chats.begin() + static_cast<std::ptrdiff_t>(chat));
}

void WholeProgram::AddRecipients(std::string_view names) {
  if (!composer) composer.emplace(users);
  composer->AddRecipients(names);
}

void WholeProgram::SendAlert(std::string_view recipients, const std::string& text) {
  AddRecipients(recipients);
  if (composer->IsEverybody()) messenger.SendMsg(net::kAlertMark + text);
  const ListRows& rows = composer->Rows();
  for (std::size_t i = 0; i < rows.Count() && !composer->IsEverybody(); ++i) {
    messenger.SendPrivate(rows.At(i).text + ' ' + net::kAlertMark + text);
    core::WriteLog("Private alert sent to " + rows.At(i).text);
  }
  composer.reset();
}

void WholeProgram::ClosePopup(std::size_t popup) {
  popups.erase(popups.begin() + static_cast<std::ptrdiff_t>(popup));
  ShowWaitingAlerts();
}

std::string_view WholeProgram::Violation() {
  if (!violation_.empty()) return violation_;
  for (const std::string_view violation : {RowsViolation(users.lvUsers), ComposerViolation()})
    if (!violation.empty()) return violation;
  for (std::size_t i = 0; i < users.lvUsers.Count(); ++i)
    if (const std::string_view violation = RowViolation(users.lvUsers.At(i)); !violation.empty()) return violation;
  if (users.lblStat.Tag() != ExpectedCounts()) return "the counts are wrong";
  for (const auto& chat : chats)
    if (const auto violation = ChatViolation(static_cast<PlainChat&>(*chat)); !violation.empty()) return violation;
  if (Desktop().queue.Waiting() > core::kMaxWaitingBoxes) return "too many message boxes wait";
  if (popups.size() > conversation::kMaxOpenPopups) return "too many popups";
  if (alerts_.Waiting() > conversation::kMaxWaitingAlerts) return "too many alerts wait";
  if (popups.size() < conversation::kMaxOpenPopups && alerts_.Waiting() > 0) return "an alert waits without need";
  if (core::gDispatching) return "gDispatching is still set";
  if (dispatcher.Waiting() > 0) return "a datagram waits after the dispatch";
  return {};
}

// Without its words if the language file lacks them.
std::string WholeProgram::ExpectedCounts() const {
  const auto listed = static_cast<std::int64_t>(users.lvUsers.Count()) - 1;
  const std::int64_t count = listed - static_cast<std::int64_t>(users.GroupLines().size());
  const std::string words = core::FindText(kCountsText).value_or("");
  return " " + std::to_string(count) + " " + std::string(core::BarField(words, count == 1 ? 0 : 1)) + " " +
         std::string(core::BarField(words, 2)) + " (-" + std::to_string(users.BlockedNames().size()) + ")";
}

std::string_view WholeProgram::RowViolation(const ListRow& row) const {
  const bool isUser = row.icon == toolkit::kUserIcon || row.icon == toolkit::kBlockedIcon;
  if (row.icon != row.smallIcon) return "a row's two icons differ";
  if (!isUser) return toolkit::IsSpecialRow(row.text) ? "" : "a user without a user's icon";
  if (row.key != core::LowerCase(row.text)) return "a user's key is not the lower-case name";
  if (row.text.starts_with(net::kHiddenMark) && !core::EqualIgnoringCase(row.text, core::gCurName))
    return "a hidden user is listed";
  const bool marked = users.IsBlocked(row.text) && !toolkit::IsSpecialRow(row.text);
  return marked == (row.icon == toolkit::kBlockedIcon) ? "" : "a user with the wrong icon";
}

std::string_view WholeProgram::ComposerViolation() const {
  if (!composer) return {};
  if (composer->IsEverybody() && composer->Rows().Count() != 1) return "another recipient beside everybody";
  return RowsViolation(composer->Rows());
}

std::string_view WholeProgram::ChatViolation(PlainChat& chat) const {
  chat.RefUserList();
  const ListRows& rows = chat.participants.Rows();
  if (const std::string_view violation = RowsViolation(rows); !violation.empty()) return violation;
  for (std::size_t i = 0; i < rows.Count(); ++i) {
    const ListRow& row = rows.At(i);
    if (rows.FindTextIgnoringCase(row.text) != &row) return "two participants have the same name";
    const bool present = users.lvUsers.FindTextIgnoringCase(row.text) != nullptr;
    const int icon = core::EqualIgnoringCase(row.text, toolkit::kEverybody) ? toolkit::kEverybodyIcon
                     : present && !users.IsBlocked(row.text)                ? toolkit::kUserIcon
                                                                            : toolkit::kBlockedIcon;
    if (row.icon != icon) return "a participant with the wrong icon";
  }
  if (chat.Offered() != OfferedNames()) return "the names offered are not those listed";
  return {};
}

std::vector<std::string> WholeProgram::OfferedNames() const {
  std::vector<std::string> names;
  for (std::size_t i = 0; i < users.lvUsers.Count(); ++i) {
    const std::string& text = users.lvUsers.At(i).text;
    if (!toolkit::IsSpecialRow(text) || text == toolkit::kEverybody) names.push_back(text);
  }
  return names;
}

void WholeProgram::ShowOptionsAtStartUp() { core::gUserName = core::gCurName = core::gUserName + "2"; }

void WholeProgram::Open(int) {
  Close();
  if (refuses) throw core::RuntimeError(10048, "Address already in use");
  openName_ = core::gCurName;
  open_ = true;
  wakeAt_.reset();
}

void WholeProgram::Send(std::string_view bytes) {
  if (!open_) return;
  // A copy whose start failed while it listened sends under the user's name, no longer under the hidden one.
  const std::string_view sender = net::SplitPacket(bytes).sender;
  const bool right = sender == openName_ || (core::gStarting != 0 && sender == core::gUserName);
  if (!right) violation_ = "a packet with the wrong sender";
  if (isDown_) {
    if (unsent_.Add(bytes) && IsText(bytes)) unsentTexts_.emplace_back(bytes);
  } else if (own_.size() < kMaxOwn) {
    own_.emplace_back(bytes);
  }
}

void WholeProgram::Close() {
  open_ = false;
  unsent_.Clear();
  unsentTexts_.clear();
}

void WholeProgram::SetNetworkDown(bool down) {
  isDown_ = down;
  if (down) return;
  std::size_t count = 0, bytes = 0;
  std::vector<std::string> texts;
  for (; !unsent_.Empty(); unsent_.RemoveFront()) {
    const std::string& datagram = unsent_.Front();
    ++count;
    bytes += datagram.size();
    if (IsText(datagram)) texts.push_back(datagram);
    if (own_.size() < kMaxOwn) own_.push_back(datagram);
  }
  if (count > net::UnsentQueue::kMaxCount || bytes > net::UnsentQueue::kMaxBytes) violation_ = "too much was unsent";
  if (texts != unsentTexts_ && !mayLose) violation_ = "unsent texts lost or out of order";
  unsentTexts_.clear();
}

void WholeProgram::WakeIn(std::uint32_t milliseconds) { wakeAt_ = core::TicksAfter(Desktop().ticks, milliseconds); }

std::shared_ptr<net::ChatWindow> WholeProgram::OpenChat(std::string_view participants) {
  if (chats.size() >= kMaxChats) return nullptr;
  StartChat(participants);
  return chats.back();
}

void WholeProgram::ShowAlert(std::string_view text, std::string_view sender, int iconKind) {
  if (core::gStatus > 1 || users.IsBlocked(sender)) violation_ = "an alert that should have been suppressed";
  alerts_.Add({std::string(text), std::string(sender), iconKind});
  ShowWaitingAlerts();
}

void WholeProgram::ShowWaitingAlerts() {
  while (auto alert = alerts_.Next(popups.size())) popups.push_back(std::move(*alert));
}

}  // namespace support
