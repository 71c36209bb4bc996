// Who is on a segment and what is said there, as one sees it who only listens.
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
  std::optional<int> state;  // 0, 1 or 2, as "S/" tells it
  std::int32_t colour = 0;   // 0x00BBGGRR
  std::uint32_t host = 0;    // the address that the last packet came from
};

enum class EventKind { Joined, Left, State, Colour, Alert, Chat, Notice };

struct Event {
  EventKind kind{};
  User user;                      // the sender, as it is known now
  std::optional<std::string> to;  // of an alert or a chat line: nothing when it is for everybody
  std::string text;
};

class SegmentView {
 public:
  // A flood of invented names must not fill the memory: those beyond are not listed.
  static constexpr std::size_t kMaxUsers = 100000, kMaxNameBytes = 32 * 1024 * 1024;

  // What one datagram tells, in order. Hidden names tell nothing: they are nobody yet.
  std::vector<Event> Take(const wire::Datagram& datagram);

  // By name, byte for byte.
  const std::map<std::string, User, std::less<>>& Users() const { return users_; }

  // Whatever the case, as recipients are compared. Null when nobody goes by this name.
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
