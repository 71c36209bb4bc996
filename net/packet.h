// What crosses the wire: one datagram, one packet, plain ANSI text "sender|K/argument" without length, header or
// terminator. docs/protocol.md tells it at length.
#pragma once

#include <string>
#include <string_view>

namespace net {

inline constexpr int kPort = 1414;  // of every copy, to listen on and to send to

// The first character of a message text. Bytes, not letters: they are the same whatever the code page.
inline constexpr char kChatMark = '\xDE';
inline constexpr char kAlertMark = '\xDF';

// The largest payload of one UDP datagram over IPv4 (RFC 768: 65535 less the IP and UDP headers).
inline constexpr std::size_t kMaxPacket = 65507;

// Bytes of a text that is typed, and of a screen name: a private text has two names beside it, "|P/", its mark and
// another bar, and so always fits.
inline constexpr std::size_t kMaxText = 60000, kMaxName = (kMaxPacket - kMaxText - 5) / 2;

// A name that begins with this takes part without being listed: a copy that is still synchronising.
inline constexpr char kHiddenMark = '_';

inline constexpr std::string_view kPresence = "M/", kColour = "C/", kState = "S/", kLeave = "L/", kPrivate = "P/",
                                  kNotice = "B/";

// Views into the packet's text. A bar is a letter here, as everywhere: one that is the second byte of another parts
// nothing. A copy knows the letters of its own code page only.
struct Packet {
  std::string_view sender;    // up to the first bar, or everything when there is none
  std::string_view kind;      // the two characters after it, as received; fewer at the packet's end
  std::string_view argument;  // the rest
};

Packet TakeApart(std::string_view packet);

// Kinds are plain ASCII and compared without regard to case.
bool IsKind(std::string_view kind, std::string_view wanted);

struct PrivateText {
  std::string_view text, recipient;  // both empty when the argument holds no bar
  bool found = false;
};

// Splits the argument of a private message at its last bar: the text may hold bars, the recipient cannot.
PrivateText SplitPrivate(std::string_view argument);

// sender, bar, command.
std::string BuildPacket(std::string_view sender, std::string_view command);

// The command of a private message from "recipient, blank, message": both trimmed, "P/|" when the line holds no blank.
std::string PrivateCommand(std::string_view line);

}  // namespace net
