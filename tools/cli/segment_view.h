// The users and messages of a segment, as a passive listener sees them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "net/packet.h"
#include "tools/wire/udp_socket.h"

namespace cli {

// Texts and names are bytes of the segment's code page.
struct User {
  std::string name;
  std::optional<int> state;  // 0, 1 or 2, from "S/"
  std::int32_t colour = 0;   // 0x00BBGGRR
  std::uint32_t host = 0;    // source address of the last packet
};

enum class EventKind { Joined, Left, State, Colour, Alert, Chat, Notice };

struct Event {
  EventKind kind{};
  User user;                      // the sender, after this event
  std::optional<std::string> to;  // recipient of an alert or a chat line; nothing if everybody
  std::string text;
};

class SegmentView {
 public:
  // Limits against a flood of invented names; further names are not listed.
  static constexpr std::size_t kMaxUsers = 100000, kMaxNameBytes = 32 * 1024 * 1024;

  // The events that one datagram causes, in order. Hidden names are ignored.
  std::vector<Event> Take(const wire::Datagram& datagram);

  // By name, case-sensitive.
  const std::map<std::string, User, std::less<>>& Users() const { return users_; }

  // Ignores case, as for recipients. Null when nobody has this name.
  const User* Find(std::string_view name) const;

 private:
  User* Listed(std::string_view name, std::vector<Event>& events);
  void TakeState(User& user, std::string_view argument, std::vector<Event>& events);
  void TakeColour(User& user, std::string_view argument, std::vector<Event>& events);
  std::vector<Event> TakeLeave(std::string_view name);

  std::map<std::string, User, std::less<>> users_;
  std::size_t nameBytes_ = 0;
};

}  // namespace cli
