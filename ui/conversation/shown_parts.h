// The part of a conversation that a rich edit control holds, as consecutive insertions.
#pragma once

#include <cstddef>
#include <deque>

#include "ui/conversation/paragraphs.h"

namespace conversation {

struct ShownPart {
  Position first, end;
  std::size_t characters = 0;  // in the control
  std::size_t weight = 0, paragraphs = 0;
  toolkit::Twips widest{};  // the largest indent of its lines
};

class ShownParts {
 public:
  // The weight up to which parts are merged.
  static constexpr std::size_t kSmall = 4096;

  bool Empty() const { return parts_.empty(); }
  std::size_t Characters() const { return characters_; }
  std::size_t Weight() const { return weight_; }
  std::size_t Paragraphs() const { return paragraphs_; }
  toolkit::Twips Widest() const;

  // Only while not Empty().
  const ShownPart& FirstPart() const { return parts_.front(); }
  const ShownPart& LastPart() const { return parts_.back(); }
  Position First() const { return FirstPart().first; }
  Position End() const { return LastPart().end; }

  // Merges a small part into the last one, so that not every line is a part of its own.
  void AddLater(const ShownPart& part);
  void AddEarlier(const ShownPart& part);

  // Remove and return the first, or the last, part.
  ShownPart DropFirst();
  ShownPart DropLast();

  // The beginning of the part that contains this character, and the offset of the character in it.
  struct Found {
    Position first;
    std::size_t offset;
  };
  Found Find(std::size_t character) const;

 private:
  void Count(const ShownPart& part);
  void Discount(const ShownPart& part);

  std::deque<ShownPart> parts_;
  std::size_t characters_ = 0, weight_ = 0, paragraphs_ = 0;
};

}  // namespace conversation
