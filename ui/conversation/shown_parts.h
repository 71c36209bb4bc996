// What a text box holds of a conversation: parts that follow each other, in the portions in which they were put in.
#pragma once

#include <cstddef>
#include <deque>

#include "ui/conversation/paragraphs.h"

namespace conversation {

struct ShownPart {
  Position first, end;
  std::size_t characters = 0;  // of the box
  std::size_t weight = 0, paragraphs = 0;
  toolkit::Twips widest{};  // indent of a line
};

class ShownParts {
 public:
  // The weight up to which parts become one.
  static constexpr std::size_t kSmall = 4096;

  bool Empty() const { return parts_.empty(); }
  std::size_t Characters() const { return characters_; }
  std::size_t Weight() const { return weight_; }
  std::size_t Paragraphs() const { return paragraphs_; }
  toolkit::Twips Widest() const;

  // Not of an empty box.
  const ShownPart& FirstPart() const { return parts_.front(); }
  const ShownPart& LastPart() const { return parts_.back(); }
  Position First() const { return FirstPart().first; }
  Position End() const { return LastPart().end; }

  // Small parts become one with the last part, so that not each line is a part of its own.
  void AddLater(const ShownPart& part);
  void AddEarlier(const ShownPart& part);

  // Takes the first, or the last, part away; returns it.
  ShownPart DropFirst();
  ShownPart DropLast();

  // The part that this character is in, and how far behind its beginning.
  struct Found {
    Position first;
    std::size_t behind;
  };
  Found Find(std::size_t character) const;

 private:
  void Count(const ShownPart& part);
  void Discount(const ShownPart& part);

  std::deque<ShownPart> parts_;
  std::size_t characters_ = 0, weight_ = 0, paragraphs_ = 0;
};

}  // namespace conversation
