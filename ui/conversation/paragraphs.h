// The paragraphs of a conversation: each line begins one, and so does each line break in its text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ui/conversation/conversation.h"

namespace conversation {

// The beginning of a paragraph: the number of the line, and the offset in its text. At offset 0 the text follows its
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
  std::string_view text;  // of this paragraph, without the line break that ends it
  bool first = false;     // of its line
  Position next;          // where the next paragraph begins
};

inline Position BeginOf(const Conversation& said) { return {said.First(), 0}; }
inline Position EndOf(const Conversation& said) { return {said.End(), 0}; }

// Requires at < EndOf(said).
Paragraph ParagraphAt(const Conversation& said, Position at);

// The beginning of the paragraph before; requires BeginOf(said) < at.
Position PreviousParagraph(const Conversation& said, Position at);

// The cost of displaying a paragraph: its bytes of text plus a constant overhead.
std::size_t WeightOf(const Paragraph& paragraph);

// Stops counting above `limit`: a line may hold tens of thousands of paragraphs.
std::size_t WeightBetween(const Conversation& said, Position from, Position to, std::size_t limit);

// Move over whole paragraphs, at least one, until `weight` is passed or the conversation ends.
Position GoForward(const Conversation& said, Position from, std::size_t weight);
Position GoBack(const Conversation& said, Position from, std::size_t weight);

// A blank, a tab or another control character.
inline bool IsBlank(char c) { return static_cast<unsigned char>(c) <= ' ' || c == '\x7F'; }

// The text as it is displayed. Text from the network may hold any byte; a rich edit control would interpret control
// characters as cell marks and page breaks, so all but tabs become blanks.
std::string Shown(std::string_view text);

// "anna:", with the time before it if the line has one. Line breaks in a name become blanks, so that nobody can forge a
// line of somebody else.
std::string HeadOf(const ChatLine& line);

}  // namespace conversation
