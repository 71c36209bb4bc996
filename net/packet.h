// The wire format: one packet per datagram, plain ANSI text "sender|K/argument" without length, header or terminator.
// See docs/protocol.md.
#pragma once

#include <string>
#include <string_view>

namespace net {

inline constexpr int kPort = 1414;  // every copy listens on it and sends to it

// The first byte of a message text, the same in every code page.
inline constexpr char kChatMark = '\xDE';
inline constexpr char kAlertMark = '\xDF';

// The largest payload of a UDP datagram over IPv4: 65535 less the IP and UDP headers.
inline constexpr std::size_t kMaxPacket = 65507;

// The largest text that can be typed, and the largest screen name, in bytes: a private text with two names, "|P/", its
// mark and another bar fits into a packet.
inline constexpr std::size_t kMaxText = 60000, kMaxName = (kMaxPacket - kMaxText - 5) / 2;

// The first character of hidden names, which nobody lists: a copy uses one during start-up.
inline constexpr char kHiddenMark = '_';

inline constexpr std::string_view kPresence = "M/", kColour = "C/", kState = "S/", kLeave = "L/", kPrivate = "P/",
                                  kNotice = "B/";

// Views into the packet's text. A bar that is the trail byte of a character does not separate; each copy parses by its
// own code page.
struct Packet {
  std::string_view sender;    // up to the first bar, or everything when there is none
  std::string_view kind;      // the two characters after it, or fewer at the end of the packet
  std::string_view argument;  // the rest
};

Packet SplitPacket(std::string_view packet);

// Kinds are plain ASCII and compared without regard to case.
bool IsKind(std::string_view kind, std::string_view wanted);

struct PrivateText {
  std::string_view text, recipient;  // both empty when the argument holds no bar
  bool found = false;
};

// Splits the argument of a private message at its last bar: the text may contain bars, the recipient cannot.
PrivateText SplitPrivate(std::string_view argument);

// sender, bar, command.
std::string BuildPacket(std::string_view sender, std::string_view command);

// The command of a private message from "recipient, blank, message", both trimmed; "P/|" when the line has no blank.
std::string PrivateCommand(std::string_view line);

}  // namespace net
