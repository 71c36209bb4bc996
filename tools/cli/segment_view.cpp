#include "tools/cli/segment_view.h"

#include <algorithm>

#include "core/numbers.h"
#include "core/runtime_error.h"
#include "core/text.h"

namespace cli {
namespace {

constexpr double kMaxState = 2;

// A text without a mark, such as a greeting, is not shown to users, so it is not an event.
void TakeText(const User& user, std::string_view text, std::optional<std::string> to, std::vector<Event>& events) {
  const bool isAlert = text.starts_with(net::kAlertMark);
  if (!isAlert && !text.starts_with(net::kChatMark)) return;
  events.push_back({.kind = isAlert ? EventKind::Alert : EventKind::Chat,
                    .user = user,
                    .to = std::move(to),
                    .text = std::string(text.substr(1))});
}

void TakePrivate(const User& user, std::string_view argument, std::vector<Event>& events) {
  const net::PrivateText message = net::SplitPrivate(argument);
  if (message.found) TakeText(user, message.text, std::string(message.recipient), events);
}

}  // namespace

std::vector<Event> SegmentView::Take(const wire::Datagram& datagram) {
  const net::Packet packet = net::SplitPacket(datagram.bytes);
  std::vector<Event> events;
  if (packet.sender.starts_with(net::kHiddenMark)) return {};
  if (net::IsKind(packet.kind, net::kLeave)) return TakeLeave(packet.sender);
  User* user = Listed(packet.sender, events);
  if (!user) return {};
  user->host = datagram.sender.host;
  if (!events.empty()) events.front().user = *user;
  const auto is = [&packet](std::string_view kind) { return net::IsKind(packet.kind, kind); };
  if (is(net::kState)) TakeState(*user, packet.argument, events);
  if (is(net::kColour)) TakeColour(*user, packet.argument, events);
  if (is(net::kPresence)) TakeText(*user, packet.argument, std::nullopt, events);
  if (is(net::kPrivate)) TakePrivate(*user, packet.argument, events);
  if (is(net::kNotice))
    events.push_back({.kind = EventKind::Notice, .user = *user, .to = {}, .text = std::string(packet.argument)});
  return events;
}

const User* SegmentView::Find(std::string_view name) const {
  const auto found =
      std::ranges::find_if(users_, [name](const auto& each) { return core::EqualIgnoringCase(each.first, name); });
  return found == users_.end() ? nullptr : &found->second;
}

User* SegmentView::Listed(std::string_view name, std::vector<Event>& events) {
  const auto found = users_.find(name);
  if (found != users_.end()) return &found->second;
  if (users_.size() >= kMaxUsers || nameBytes_ + name.size() > kMaxNameBytes) return nullptr;
  nameBytes_ += name.size();
  User& user = users_[std::string(name)];
  user.name = name;
  events.push_back({.kind = EventKind::Joined, .user = {}, .to = {}, .text = {}});
  return &user;
}

void SegmentView::TakeState(User& user, std::string_view argument, std::vector<Event>& events) {
  const double number = core::TolerantNumber(argument);
  if (number < 0 || number > kMaxState || number != static_cast<int>(number)) return;
  if (user.state == static_cast<int>(number)) return;
  user.state = static_cast<int>(number);
  events.push_back({.kind = EventKind::State, .user = user, .to = {}, .text = {}});
}

void SegmentView::TakeColour(User& user, std::string_view argument, std::vector<Event>& events) {
  try {
    const std::int32_t colour = core::ToInt32(core::TolerantNumber(argument));
    if (colour == user.colour) return;
    user.colour = colour;
    events.push_back({.kind = EventKind::Colour, .user = user, .to = {}, .text = {}});
  } catch (const core::RuntimeError&) {
    // A number out of range is ignored.
  }
}

std::vector<Event> SegmentView::TakeLeave(std::string_view name) {
  const auto found = users_.find(name);
  if (found == users_.end()) return {};
  nameBytes_ -= name.size();
  Event left{.kind = EventKind::Left, .user = std::move(found->second), .to = {}, .text = {}};
  users_.erase(found);
  return {std::move(left)};
}

}  // namespace cli
