// The text of a conversation as its box holds it, with long stretches of blanks cut: a control may need hundreds of
// bytes, and many seconds of time, for tens of thousands of them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ui/conversation/paragraphs.h"

namespace conversation {

// About as many as fit into a row of a wide window. A control may paint each of them on its own.
inline constexpr std::size_t kMaxBlanks = 400;

// As Shown, but no more than kMaxBlanks blanks, tabs or control characters in a row.
std::string ShownInBox(std::string_view text);
std::size_t SizeInBox(std::string_view text);

// What was said where a box holds `selected`, with CR LF between paragraphs. `before` is what the box holds from the
// paragraph at `from` up to it; a box may end paragraphs with CR or CR LF. Empty when nothing of it is cut, or when the
// box holds something else than this conversation.
std::string Uncut(const Conversation& said, Position from, std::string_view before, std::string_view selected);

}  // namespace conversation
