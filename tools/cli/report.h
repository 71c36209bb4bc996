// What the commands print: UTF-8, for people or as JSON.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "tools/cli/segment_view.h"

namespace cli {

// A neighbour's text for a terminal: control characters, which could move its cursor or change its colours, come out as
// escapes.
std::string Printable(std::string_view bytes);

// "Available", or "?" while it is not known.
std::string StateText(const User& user);

void PrintUsers(std::ostream& out, const SegmentView& view);
void PrintUsersAsJson(std::ostream& out, const SegmentView& view);

// One line. An event of the time in which those who are there already answer is told as "present", not as "joined".
// Without `texts` only who wrote to whom is told.
struct EventStyle {
  bool texts = false, answering = false;
};
std::string EventLine(const Event& event, const EventStyle& style);
std::string EventJson(const Event& event, const EventStyle& style);

}  // namespace cli
