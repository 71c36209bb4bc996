// Alerts and chat lines from the command line.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "tools/cli/visit.h"

namespace cli {

// All texts are UTF-8.
struct Message {
  bool isAlert = true;
  bool toAll = false;
  std::vector<std::string> recipients;
  std::string text;
  std::optional<std::string> as;  // the sender; USER@HOST if missing
  Milliseconds wait{5000};        // maximum time to wait for the recipients
};

// Limit on the UTF-8 text from standard input, bytes; in the code page it may be up to four times shorter.
inline constexpr std::size_t kMaxTyped = 4 * net::kMaxPacket;

// Reads the text to send, without trailing line ends. Throws UsageError when it is too long for any packet.
std::string ReadText(std::istream& in);

// Waits for the recipients to answer, sends to those who did, and leaves. Returns kDone, or kAbsent if a recipient did
// not answer, and prints the name to `errors`. Throws UsageError and NetworkError.
ExitCode Send(const Message& message, std::uint32_t broadcast, std::ostream& errors);

}  // namespace cli
