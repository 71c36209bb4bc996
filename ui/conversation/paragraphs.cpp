#include "ui/conversation/paragraphs.h"

#include <algorithm>
#include <utility>

namespace conversation {
namespace {

constexpr std::string_view kBreaks = "\r\n";
constexpr std::size_t kParagraphOverhead = 20;

// Length of the line break that begins, or ends, at this offset.
std::size_t BreakAt(std::string_view text, std::size_t at) { return text.substr(at).starts_with(kBreaks) ? 2 : 1; }
std::size_t BreakBefore(std::string_view text, std::size_t at) { return text.substr(0, at).ends_with(kBreaks) ? 2 : 1; }

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

toolkit::Twips ShownParts::Widest() const {
  toolkit::Twips widest;
  for (const ShownPart& part : parts_) widest.value = std::max(widest.value, part.widest.value);
  return widest;
}

void ShownParts::AddLater(const ShownPart& part) {
  Count(part);
  if (Empty() || parts_.back().weight + part.weight > kSmall) return parts_.push_back(part);
  ShownPart& last = parts_.back();
  last.end = part.end;
  last.characters += part.characters;
  last.weight += part.weight;
  last.paragraphs += part.paragraphs;
  last.widest.value = std::max(last.widest.value, part.widest.value);
}

void ShownParts::AddEarlier(const ShownPart& part) {
  Count(part);
  parts_.push_front(part);
}

ShownPart ShownParts::DropFirst() {
  const ShownPart part = parts_.front();
  parts_.pop_front();
  Discount(part);
  return part;
}

ShownPart ShownParts::DropLast() {
  const ShownPart part = parts_.back();
  parts_.pop_back();
  Discount(part);
  return part;
}

ShownParts::Found ShownParts::Find(std::size_t character) const {
  for (const ShownPart& part : parts_) {
    if (character < part.characters) return {part.first, character};
    character -= part.characters;
  }
  return {parts_.back().first, parts_.back().characters};
}

void ShownParts::Count(const ShownPart& part) {
  characters_ += part.characters;
  weight_ += part.weight;
  paragraphs_ += part.paragraphs;
}

void ShownParts::Discount(const ShownPart& part) {
  characters_ -= part.characters;
  weight_ -= part.weight;
  paragraphs_ -= part.paragraphs;
}

}  // namespace conversation
