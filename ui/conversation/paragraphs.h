// The paragraphs of a conversation: a line is one of them, and each line break in its text begins another one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ui/conversation/conversation.h"

namespace conversation {

// Where a paragraph begins: the number of the line, and the offset in its text. At offset 0 the text stands behind its
// head, "anna:" and a tab.
struct Position {
  std::size_t line = 0, offset = 0;
  friend constexpr bool operator==(const Position&, const Position&) = default;
  friend constexpr bool operator<(const Position& a, const Position& b) {
    return a.line < b.line || (a.line == b.line && a.offset < b.offset);
  }
};

struct Paragraph {
  ChatLine line;
  std::string_view text;  // of this paragraph, without the line break behind it
  bool first = false;     // of its line
  Position next;          // where the next paragraph begins
};

inline Position BeginOf(const Conversation& said) { return {said.First(), 0}; }
inline Position EndOf(const Conversation& said) { return {said.End(), 0}; }

// at < EndOf(said).
Paragraph ParagraphAt(const Conversation& said, Position at);

// The place of the paragraph before; BeginOf(said) < at.
Position PreviousParagraph(const Conversation& said, Position at);

// What showing a paragraph costs, in bytes of text: each has a share that does not depend on its length.
std::size_t WeightOf(const Paragraph& paragraph);

// Counted no further than it takes to tell that it is more than `most`: a line may hold tens of thousands of
// paragraphs.
std::size_t WeightBetween(const Conversation& said, Position from, Position to, std::size_t most);

// The place of the first paragraph behind `from` before which there is so much, or the end; there is always one
// paragraph between them. And the same backwards.
Position GoForward(const Conversation& said, Position from, std::size_t weight);
Position GoBack(const Conversation& said, Position from, std::size_t weight);

// What comes from the network may hold anything. A rich text box would take control bytes for cell marks and page
// breaks, so all but tabs become blanks.
std::string Shown(std::string_view text);

// "anna:", with the time in front where it is added. A name stays in one paragraph whatever it holds, so that nobody
// can write a line that looks like somebody else's.
std::string HeadOf(const ChatLine& line);

}  // namespace conversation
