// The partner's output: lines on standard output, each with its time.
#pragma once

#include <string_view>

namespace demo {

// Prints one line. Control characters and bytes beyond ASCII are escaped.
void Show(std::string_view what, std::string_view text);

// Prints a packet, if ShowPackets is on.
void ShowPacket(std::string_view what, std::string_view bytes);
void ShowPackets(bool show);

}  // namespace demo
