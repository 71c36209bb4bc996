#include "ui/conversation/edit_text.h"

#include <algorithm>
#include <utility>

namespace conversation {
namespace {

constexpr char kEnd = '\r';

// Whether this character is cut, when called for each character in turn; `blanks` is the length of the current run.
bool IsCut(char c, std::size_t& blanks) {
  blanks = IsBlank(c) ? blanks + 1 : 0;
  return blanks > kMaxBlanks;
}

// Removes the rest of a paragraph, with its end, from the front; false when the text has no paragraph end.
bool TakeParagraph(std::string_view& text, std::string_view& paragraph) {
  const std::size_t end = text.find(kEnd);
  paragraph = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (text.starts_with('\n')) text.remove_prefix(1);
  return end != std::string_view::npos;
}

// The offset in the uncut text. The end of a cut run becomes the end of the whole run.
std::size_t UncutOffset(std::string_view text, std::size_t offset) {
  std::size_t blanks = 0, kept = 0;
  for (std::size_t at = 0; at < text.size(); ++at)
    if (!IsCut(text[at], blanks) && kept++ == offset) return at;
  return text.size();
}

// Appends the uncut text of a part of a paragraph; false when the control's text is not this paragraph.
bool AddUncut(const Paragraph& paragraph, std::size_t from, std::string_view selected, std::string& whole) {
  const std::string head = paragraph.first ? HeadOf(paragraph.line) + '\t' : std::string();
  if ((head + ShownInEdit(paragraph.text)).compare(from, selected.size(), selected) != 0) return false;
  const std::string text = Shown(paragraph.text);
  const auto uncut = [&](std::size_t offset) {
    const std::size_t inHead = std::min(offset, head.size());
    return inHead + UncutOffset(text, offset - inHead);
  };
  const std::size_t begin = uncut(from);
  whole.append(head + text, begin, uncut(from + selected.size()) - begin);
  return true;
}

}  // namespace

std::string ShownInEdit(std::string_view text) {
  std::string shown = Shown(text);
  std::size_t blanks = 0;
  std::erase_if(shown, [&](char c) { return IsCut(c, blanks); });
  return shown;
}

std::size_t SizeInEdit(std::string_view text) {
  std::size_t blanks = 0;
  return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, [&](char c) { return IsCut(c, blanks); }));
}

std::string Uncut(const Conversation& said, Position from, std::string_view before, std::string_view selected) {
  std::string_view line;
  bool dropped = from == BeginOf(said) && said.First() > 0;  // the first paragraph counts the dropped lines
  while (TakeParagraph(before, line)) {
    if (std::exchange(dropped, false)) continue;
    if (!(from < EndOf(said))) return {};
    from = ParagraphAt(said, from).next;
  }
  std::string whole;
  std::size_t offset = line.size(), cut = 0;
  for (bool more = true; more; offset = 0) {
    more = TakeParagraph(selected, line);
    const std::size_t size = whole.size();
    if (std::exchange(dropped, false)) {
      whole += line;
    } else if (from < EndOf(said)) {
      const Paragraph paragraph = ParagraphAt(said, from);
      if (!AddUncut(paragraph, offset, line, whole)) return {};
      from = paragraph.next;
    } else if (!line.empty()) {
      return {};
    }
    cut += whole.size() - size - line.size();
    if (more) whole += "\r\n";
  }
  return cut > 0 ? whole : std::string();
}

}  // namespace conversation
