// What the partner shows of itself: lines on standard output, each with its time.
#pragma once

#include <string_view>

namespace demo {

// One line. Bytes of Windows-1252 beyond ASCII appear as escapes.
void Show(std::string_view what, std::string_view text);

// The same for a packet, when packets are to be shown.
void ShowPacket(std::string_view what, std::string_view bytes);
void ShowPackets(bool show);

}  // namespace demo
