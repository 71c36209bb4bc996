#include "net/packet.h"

#include "core/text.h"

namespace net {

Packet SplitPacket(std::string_view packet) {
  const std::size_t bar = core::Find(packet, "|");
  if (bar == std::string_view::npos) return {.sender = packet, .kind = {}, .argument = {}};
  const std::string_view command = packet.substr(bar + 1);
  const std::string_view kind = command.substr(0, 2);
  return {.sender = packet.substr(0, bar), .kind = kind, .argument = command.substr(kind.size())};
}

bool IsKind(std::string_view kind, std::string_view wanted) {
  return kind.size() == wanted.size() && (kind[0] == wanted[0] || kind[0] == (wanted[0] | 0x20)) &&
         kind[1] == wanted[1];
}

PrivateText SplitPrivate(std::string_view argument) {
  const bool marked = argument.starts_with(kChatMark) || argument.starts_with(kAlertMark);
  const std::size_t text = marked ? 1 : 0;  // skipped, because it may be a lead byte in the code page
  std::size_t bar = core::FindLast(argument.substr(text), "|");
  if (bar == std::string_view::npos) return {};
  bar += text;
  return {.text = argument.substr(0, bar), .recipient = argument.substr(bar + 1), .found = true};
}

std::string BuildPacket(std::string_view sender, std::string_view command) {
  return std::string(sender).append(1, '|').append(command);
}

std::string PrivateCommand(std::string_view line) {
  line = core::Trim(line);  // otherwise a leading blank would make the recipient empty
  const std::size_t blank = line.find(' ');
  const bool found = blank != std::string_view::npos;
  const std::string_view recipient = found ? line.substr(0, blank) : std::string_view();
  const std::string_view message = found ? core::Trim(line.substr(blank)) : std::string_view();
  return std::string(kPrivate).append(message).append(1, '|').append(recipient);
}

}  // namespace net
