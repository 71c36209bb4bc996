// The output of the commands: UTF-8, as text or JSON.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>

#include "tools/cli/segment_view.h"

namespace cli {

// Text from the network, safe for a terminal: control characters, which could move the cursor or change colours, are
// escaped.
std::string Printable(std::string_view bytes);

// "Available", or "?" while unknown.
std::string StateText(const User& user);

void PrintUsers(std::ostream& out, const SegmentView& view);
void PrintUsersAsJson(std::ostream& out, const SegmentView& view);

// While users who are already there answer (`answering`), a joined event is printed as "present". Without `texts`, only
// sender and recipient of a message are printed.
struct EventStyle {
  bool texts = false, answering = false;
};
std::string EventLine(const Event& event, const EventStyle& style);
std::string EventJson(const Event& event, const EventStyle& style);

}  // namespace cli
