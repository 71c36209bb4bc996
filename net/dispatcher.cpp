#include "net/dispatcher.h"

#include <algorithm>

#include "core/callback_guard.h"
#include "core/clock.h"
#include "core/globals.h"
#include "core/log.h"
#include "core/message_box.h"
#include "core/numbers.h"
#include "core/runtime_error.h"
#include "core/scoped_flag.h"
#include "core/text.h"

namespace net {
namespace {

constexpr int kTakesChats = 0;   // the only state in which chat lines are shown
constexpr int kTakesAlerts = 1;  // the highest state in which alerts are shown

bool IsOwnName(std::string_view name) { return core::EqualIgnoringCase(name, core::gCurName); }

// The sender's name, a blank, and a text in the sender's language.
bool IsGreeting(const Packet& packet) {
  const std::string_view text = packet.argument, name = packet.sender;
  return IsKind(packet.kind, kPresence) && text.starts_with(name) && text.substr(name.size()).starts_with(' ') &&
         !text.starts_with(kChatMark) && !text.starts_with(kAlertMark);
}

constexpr std::uint32_t kForgetInterval = 2500;  // milliseconds; scanning all names on every packet would be slow

}  // namespace

void RecentNames::Note(std::string_view name, std::int32_t now) {
  Forget(now);
  const std::size_t hash = core::NameHash()(name);
  if (times_.size() < kMaxNames || times_.contains(hash)) times_[hash] = now;
}

bool RecentNames::Has(std::string_view name, std::int32_t now) const {
  const auto found = times_.find(core::NameHash()(name));
  return found != times_.end() && core::TicksSince(found->second, now) < kSpan;
}

std::size_t RecentNames::Count(std::int32_t now) {
  Forget(now);
  return times_.size();
}

void RecentNames::Forget(std::int32_t now) {
  if (core::TicksSince(forgotten_, now) < kForgetInterval) return;
  forgotten_ = now;
  std::erase_if(times_, [now](const auto& each) { return core::TicksSince(each.second, now) >= kSpan; });
}

const Dispatcher::Route Dispatcher::kRoutes[] = {
    {kColour, &Dispatcher::HandleColour}, {kState, &Dispatcher::HandleState},     {kPresence, &Dispatcher::HandleText},
    {kLeave, &Dispatcher::HandleLeave},   {kPrivate, &Dispatcher::HandlePrivate}, {kNotice, &Dispatcher::HandleNotice},
};

Dispatcher::Dispatcher(core::Roster& roster, Conversations& conversations, Messenger& messenger)
    : roster_(roster), conversations_(conversations), messenger_(messenger) {}

void Dispatcher::DataArrived(std::string_view data) {
  if (core::gDispatching) {
    if (waiting_.size() >= kMaxWaiting || waitingBytes_ + data.size() > kMaxWaitingBytes) return;
    waiting_.emplace_back(data);
    waitingBytes_ += data.size();
    return;
  }
  current_.assign(data);
  DispatchCurrent();
  while (!waiting_.empty()) {
    current_ = std::move(waiting_.front());
    waiting_.pop_front();
    waitingBytes_ -= current_.size();
    DispatchCurrent();
  }
}

void Dispatcher::DispatchCurrent() {
  const core::ScopedFlag dispatching(core::gDispatching);
  try {
    ParsePacket(current_);
  } catch (...) {
    // Logging may fail too (out of memory); that must not leave queued datagrams stuck until the next arrival.
    core::GuardedSilently(
        [] { core::WriteLog("Error Receveing Data: " + core::NumberAndDescription(core::CurrentError())); });
  }
}

void Dispatcher::ParsePacket(std::string_view data) {
  const Packet packet = SplitPacket(data);
  const bool isListed = roster_.HasRow(packet.sender);
  if (!isListed && !Admit(packet.sender)) return;
  if (isListed && IsGreeting(packet)) AnswerReturning(packet.sender);
  roster_.RefBlock();
  RefreshChatWindows();
  for (const Route& route : kRoutes)
    if (IsKind(packet.kind, route.kind)) (this->*route.action)(packet);
  roster_.UpdateStat();
}

// Handles a sender that is not listed. True when it is listed now and its packet is to be dispatched.
bool Dispatcher::Admit(std::string_view sender) {
  if (sender.starts_with(kHiddenMark) && !IsOwnName(sender)) {
    hidden_.Note(sender, core::TickCount());
    if (AnswersHidden(sender)) messenger_.AnswerNewcomer(false, NamesHeard());
    return false;
  }
  if (!roster_.AddUser(sender)) return false;
  Answer(sender);
  return true;
}

void Dispatcher::Answer(std::string_view sender) {
  answeredLately_.Note(sender, core::TickCount());
  messenger_.AnswerNewcomer(true, NamesHeard());
}

// A copy that ended without leaving is still listed when it starts again, but needs answers like any newcomer: its
// greeting requests them. The greeting of an ordinary start follows right after the first packet, which was answered.
void Dispatcher::AnswerReturning(std::string_view sender) {
  if (!answeredLately_.Has(sender, core::TickCount())) Answer(sender);
}

// The maximum, not the sum: a copy is heard under a hidden name first and under its own later.
std::size_t Dispatcher::NamesHeard() { return std::max(roster_.CountUsers(), hidden_.Count(core::TickCount())); }

// Two copies with hidden names would answer each other's answers forever, three packets for each one. So a hidden copy
// answers another one only once per stay on the network.
bool Dispatcher::AnswersHidden(std::string_view sender) {
  if (!core::gCurName.starts_with(kHiddenMark)) return true;
  if (answeredSince_ != messenger_.Openings()) {
    answeredSince_ = messenger_.Openings();
    answered_.clear();
  }
  return answered_.size() < kMaxHiddenNames && answered_.insert(std::hash<std::string_view>()(sender)).second;
}

// Called on every packet, so the list is not copied: a refresh neither opens nor closes a window.
void Dispatcher::RefreshChatWindows() {
  for (const auto& window : conversations_.ChatWindows()) {
    window->RefUserList();
    window->RefListOfUsers();
  }
}

void Dispatcher::HandleColour(const Packet& packet) {
  roster_.SetColour(packet.sender, core::ToInt32(core::TolerantNumber(packet.argument)));
}

void Dispatcher::HandleState(const Packet& packet) {
  const double state = core::TolerantNumber(packet.argument);
  for (std::size_t i = 0; i < core::gStateNames.size(); ++i)
    if (state == static_cast<double>(i)) return roster_.SetStateText(packet.sender, core::gStateNames[i]);
  LogUnknownData(packet.argument, packet.sender);
}

// The user's own chat lines reach this copy's windows this way, by broadcast; own alerts are not shown.
void Dispatcher::HandleText(const Packet& packet) {
  if (packet.argument.empty() || roster_.IsBlocked(packet.sender)) return;
  if (!packet.argument.starts_with(kChatMark) && IsOwnName(packet.sender)) return;
  ShowChatLine(packet.argument, packet.sender, false);
}

void Dispatcher::HandleLeave(const Packet& packet) {
  roster_.RemoveRow(packet.sender);
  const auto windows = conversations_.ChatWindows();
  for (const auto& window : windows) window->RemoveUser(packet.sender);
}

void Dispatcher::HandlePrivate(const Packet& packet) {
  const PrivateText message = SplitPrivate(packet.argument);
  if (!message.found || roster_.IsBlocked(packet.sender) || !IsOwnName(message.recipient)) return;
  if (!message.text.empty()) ShowChatLine(message.text, packet.sender, true);
}

void Dispatcher::HandleNotice(const Packet& packet) {
  if (IsOwnName(packet.sender) || roster_.IsBlocked(packet.sender)) return;
  core::PostBox({.text = std::string(packet.argument), .title = std::string(packet.sender)});
}

void Dispatcher::ShowChatLine(std::string_view text, std::string_view sender, bool isPrivate) {
  if (text.starts_with(kChatMark)) {
    if (core::gStatus == kTakesChats) OfferChatLine(text.substr(1), sender);
  } else if (text.starts_with(kAlertMark)) {
    if (core::gStatus <= kTakesAlerts) conversations_.ShowAlert(text.substr(1), sender, isPrivate ? 1 : 0);
  } else {
    LogUnknownData(text, sender);
  }
}

// Every window with the sender as a participant shows the line, not only the first one.
void Dispatcher::OfferChatLine(std::string_view line, std::string_view sender) {
  const std::int32_t colour = roster_.GetColorForUName(sender);
  const auto windows = conversations_.ChatWindows();
  const auto takers =
      std::ranges::count_if(windows, [&](const auto& window) { return window->AddMsg(line, sender, colour); });
  if (takers > 0) return;
  const auto opened = OpenChat(line, sender);
  if (!opened) return NoteLostLine(sender);
  core::WriteLog("New chat window opened");
  opened->AddMsg(line, sender, colour);
}

// If no window can be created, the line is posted as a message box, as an alert is: logging alone would lose it.
std::shared_ptr<ChatWindow> Dispatcher::OpenChat(std::string_view line, std::string_view sender) {
  try {
    return conversations_.OpenChat(std::string("|").append(sender));
  } catch (...) {
    core::PostBox({.text = std::string(line), .title = std::string(sender)});
    throw;
  }
}

void Dispatcher::NoteLostLine(std::string_view sender) {
  const std::int32_t now = core::TickCount();
  if (core::TicksSince(lossNotedSince_, now) >= kLossInterval) lossNoted_.clear();
  if (lossNoted_.empty()) lossNotedSince_ = now;
  if (lossNoted_.size() >= kMaxLossesNoted || !lossNoted_.insert(core::NameHash()(sender)).second) return;
  core::WriteLog(std::string("Chat line lost, too many chat windows are open (").append(sender).append(")"));
}

void Dispatcher::LogUnknownData(std::string_view data, std::string_view sender) {
  core::WriteLog(std::string("Unknow Data Receved (").append(sender).append(": ").append(data).append(")"));
}

}  // namespace net
