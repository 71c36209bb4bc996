#include "ui/conversation/shown_parts.h"

#include <algorithm>

namespace conversation {

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
