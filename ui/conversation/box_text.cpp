#include "ui/conversation/box_text.h"

#include <algorithm>
#include <utility>

namespace conversation {
namespace {

constexpr char kEnd = '\r';

// As Shown will have it.
bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' ' || c == 0x7F; }

// For one character after the other: whether it is cut.
bool IsBeyond(char c, std::size_t& blanks) {
  blanks = IsBlank(c) ? blanks + 1 : 0;
  return blanks > kMaxBlanks;
}

// Takes the rest of a paragraph from the front, and its end; false when it has none.
bool TakeParagraph(std::string_view& text, std::string_view& paragraph) {
  const std::size_t end = text.find(kEnd);
  paragraph = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (text.starts_with('\n')) text.remove_prefix(1);
  return end != std::string_view::npos;
}

// At the end of a cut stretch: behind all of its blanks.
std::size_t PlaceInWhole(std::string_view text, std::size_t placeInBox) {
  std::size_t blanks = 0, kept = 0;
  for (std::size_t at = 0; at < text.size(); ++at)
    if (!IsBeyond(text[at], blanks) && kept++ == placeInBox) return at;
  return text.size();
}

// A part of a paragraph as it was said; false when the box does not hold this paragraph.
bool AddUncut(const Paragraph& paragraph, std::size_t from, std::string_view selected, std::string& whole) {
  const std::string head = paragraph.first ? HeadOf(paragraph.line) + '\t' : std::string();
  if ((head + ShownInBox(paragraph.text)).compare(from, selected.size(), selected) != 0) return false;
  const std::string text = Shown(paragraph.text);
  const auto place = [&](std::size_t inBox) {
    return inBox <= head.size() ? inBox : head.size() + PlaceInWhole(text, inBox - head.size());
  };
  const std::size_t begin = place(from);
  whole.append(head + text, begin, place(from + selected.size()) - begin);
  return true;
}

}  // namespace

std::string ShownInBox(std::string_view text) {
  std::string shown = Shown(text);
  std::size_t blanks = 0;
  std::erase_if(shown, [&](char c) { return IsBeyond(c, blanks); });
  return shown;
}

std::size_t SizeInBox(std::string_view text) {
  std::size_t blanks = 0;
  return text.size() -
         static_cast<std::size_t>(std::ranges::count_if(text, [&](char c) { return IsBeyond(c, blanks); }));
}

std::string Uncut(const Conversation& said, Position from, std::string_view before, std::string_view selected) {
  std::string_view line;
  bool lost = from == BeginOf(said) && said.First() > 0;  // a paragraph counts the dropped lines
  while (TakeParagraph(before, line)) {
    if (std::exchange(lost, false)) continue;
    if (!(from < EndOf(said))) return {};
    from = ParagraphAt(said, from).next;
  }
  std::string whole;
  std::size_t offset = line.size(), cut = 0;
  for (bool more = true; more; offset = 0) {
    more = TakeParagraph(selected, line);
    const std::size_t size = whole.size();
    if (std::exchange(lost, false)) {
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
