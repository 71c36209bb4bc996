// The text of a conversation as a rich edit control holds it, with long runs of blanks cut: a control may need hundreds
// of bytes for each blank, and many seconds for tens of thousands of them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ui/conversation/paragraphs.h"

namespace conversation {

// About as many as fit into a row of a wide window. A control may paint each blank separately.
inline constexpr std::size_t kMaxBlanks = 400;

// As Shown, but at most kMaxBlanks consecutive blanks, tabs or control characters.
std::string ShownInEdit(std::string_view text);
std::size_t SizeInEdit(std::string_view text);

// The uncut text of a selection, with CR LF between paragraphs. `selected` is the selected text in the control,
// `before` the text in the control from the paragraph at `from` up to the selection; paragraphs may end with CR or
// CR LF. Empty when nothing in the selection is cut, or when the control's text is not that of this conversation.
std::string Uncut(const Conversation& said, Position from, std::string_view before, std::string_view selected);

}  // namespace conversation
