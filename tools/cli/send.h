// Alerts and chat lines from the command line.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "tools/cli/visit.h"

namespace cli {

// Everything in UTF-8.
struct Message {
  bool isAlert = true;
  bool toAll = false;
  std::vector<std::string> recipients;
  std::string text;
  std::optional<std::string> as;  // the sender; by default who runs this, and where
  Milliseconds wait{5000};        // for the recipients to be heard
};

// The most bytes that a text may have on standard input, before it is known how many it has in the code page.
inline constexpr std::size_t kMaxTyped = 4 * net::kMaxPacket;

// What is there to be sent, without the end of the last line. Throws UsageError when it is longer than any packet.
std::string ReadText(std::istream& in);

// Waits until the recipients are heard, sends to those who are, and leaves. Returns kDone, or kAbsent when somebody was
// not heard, and tells `errors` who. Throws UsageError and NetworkError.
ExitCode Send(const Message& message, std::uint32_t broadcast, std::ostream& errors);

}  // namespace cli
