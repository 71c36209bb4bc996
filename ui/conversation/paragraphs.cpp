#include "ui/conversation/paragraphs.h"

#include <algorithm>

#include "ui/conversation/edit_text.h"

namespace conversation {
namespace {

constexpr std::string_view kBreaks = "\r\n";
constexpr std::size_t kParagraphOverhead = 20;

// Length of the line break that begins, or ends, at this offset.
std::size_t BreakAt(std::string_view text, std::size_t at) { return text.substr(at).starts_with(kBreaks) ? 2 : 1; }
std::size_t BreakBefore(std::string_view text, std::size_t at) { return text.substr(0, at).ends_with(kBreaks) ? 2 : 1; }

}  // namespace

Paragraph ParagraphAt(const Conversation& said, Position at) {
  const ChatLine line = said.At(at.line);
  const std::size_t end = line.text.find_first_of(kBreaks, at.offset);
  const bool last = end == std::string_view::npos;
  return {.line = line,
          .text = line.text.substr(at.offset, last ? end : end - at.offset),
          .first = at.offset == 0,
          .next = last ? Position{at.line + 1, 0} : Position{at.line, end + BreakAt(line.text, end)}};
}

Position PreviousParagraph(const Conversation& said, Position at) {
  const std::size_t line = at.offset == 0 ? at.line - 1 : at.line;
  std::string_view text = said.At(line).text;
  if (at.offset != 0) text = text.substr(0, at.offset - BreakBefore(text, at.offset));
  const std::size_t end = text.find_last_of(kBreaks);
  return {line, end == std::string_view::npos ? 0 : end + 1};
}

std::size_t WeightOf(const Paragraph& paragraph) {
  const std::size_t head = paragraph.first ? paragraph.line.prefix.size() + paragraph.line.sender.size() : 0;
  return kParagraphOverhead + head + SizeInEdit(paragraph.text);
}

std::size_t WeightBetween(const Conversation& said, Position from, Position to, std::size_t limit) {
  std::size_t weight = 0;
  while (from < to && weight <= limit) {
    const Paragraph paragraph = ParagraphAt(said, from);
    weight += WeightOf(paragraph);
    from = paragraph.next;
  }
  return weight;
}

Position GoForward(const Conversation& said, Position from, std::size_t weight) {
  std::size_t passed = 0;
  do {
    const Paragraph paragraph = ParagraphAt(said, from);
    passed += WeightOf(paragraph);
    from = paragraph.next;
  } while (passed < weight && from < EndOf(said));
  return from;
}

Position GoBack(const Conversation& said, Position from, std::size_t weight) {
  std::size_t passed = 0;
  do {
    from = PreviousParagraph(said, from);
    passed += WeightOf(ParagraphAt(said, from));
  } while (passed < weight && BeginOf(said) < from);
  return from;
}

std::string Shown(std::string_view text) {
  std::string shown(text);
  std::ranges::replace_if(
      shown, [](char c) { return IsBlank(c) && c != '\t'; }, ' ');
  return shown;
}

std::string HeadOf(const ChatLine& line) {
  std::string head = std::string(line.prefix).append(line.sender);
  std::ranges::replace_if(head, IsBlank, ' ');
  return head += ':';
}

}  // namespace conversation
