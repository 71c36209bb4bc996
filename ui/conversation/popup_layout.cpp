#include "ui/conversation/popup_layout.h"

#include "core/text.h"

namespace conversation {
namespace {

constexpr std::string_view kBreaks = "\r\n";

// Removes the first line of the text.
std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find_first_of(kBreaks));
  text.remove_prefix(line.size());
  if (!text.empty()) text.remove_prefix(text.starts_with(kBreaks) ? 2 : 1);
  return line;
}

void Wrap(std::string_view line, const FitCount& fits, std::vector<std::string_view>& lines) {
  for (;;) {
    const std::size_t fit = std::max(fits(line), core::FirstCharacter(line).size());
    if (fit >= line.size()) return lines.push_back(line);
    const std::size_t blank = line.rfind(' ', fit);
    const bool atBlank = blank != std::string_view::npos && blank > 0;
    lines.push_back(line.substr(0, atBlank ? blank : fit));
    line.remove_prefix(atBlank ? blank + 1 : fit);
  }
}

}  // namespace

std::vector<std::string_view> BreakLines(std::string_view text, const FitCount& fits) {
  std::vector<std::string_view> lines;
  do {
    Wrap(TakeLine(text), fits, lines);
  } while (!text.empty());
  return lines;
}

}  // namespace conversation
