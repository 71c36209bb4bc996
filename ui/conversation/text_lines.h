// Line breaking of a text for drawing.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

namespace conversation {

// Returns the size in bytes of the leading characters that fit into a line, of a text without line breaks.
using FitCount = std::function<std::size_t(std::string_view)>;

// The lines, as views into `text`. A line break (CR LF, CR, LF) ends a line, so one at the end does not start another.
// A line that does not fit is wrapped at a blank, which is dropped, or inside a word that is too long. At least one
// line.
std::vector<std::string_view> BreakLines(std::string_view text, const FitCount& fits);

}  // namespace conversation
