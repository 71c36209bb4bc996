// A text broken into the lines in which it is drawn.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

namespace conversation {

// How many bytes the leading letters have that fit beside each other, of a text without line breaks.
using FitCount = std::function<std::size_t(std::string_view)>;

// Views into `text`. A line break of any kind (CR LF, CR, LF) ends a line, so one at the very end starts no further
// line. A line that does not fit is broken at a blank, which is dropped, and inside a word that is too long by itself.
// There is always at least one line.
std::vector<std::string_view> BreakLines(std::string_view text, const FitCount& fits);

}  // namespace conversation
