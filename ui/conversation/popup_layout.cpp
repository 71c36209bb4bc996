#include "ui/conversation/popup_layout.h"

#include "core/text.h"

namespace conversation {
namespace {

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
    Wrap(core::TakeLine(text), fits, lines);
  } while (!text.empty());
  return lines;
}

}  // namespace conversation
