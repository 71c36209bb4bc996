// The paragraphs of a conversation: each line begins one, and so does each line break in its text. Their text as the
// rich edit control displays it, and the part of them that it holds.
#pragma once

#include <cstddef>
#include <deque>
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

// The limit of consecutive blanks in a rich edit control: about as many as fit into a row of a wide window. A control
// may paint each blank separately and need hundreds of bytes for it, and many seconds for tens of thousands of them.
inline constexpr std::size_t kMaxBlanks = 400;

// As Shown, but with at most kMaxBlanks consecutive blanks, tabs or control characters.
std::string ShownInEdit(std::string_view text);
std::size_t SizeInEdit(std::string_view text);

// The uncut text of a selection, with CR LF between paragraphs. `selected` is the selected text in the control,
// `before` the text in the control from the paragraph at `from` up to the selection; paragraphs may end with CR or
// CR LF. Empty when nothing in the selection is cut, or when the control's text is not that of this conversation.
std::string Uncut(const Conversation& said, Position from, std::string_view before, std::string_view selected);

// The paragraphs of one insertion into a rich edit control.
struct ShownPart {
  Position first, end;
  std::size_t characters = 0;  // in the control
  std::size_t weight = 0, paragraphs = 0;
  toolkit::Twips widest{};  // the largest indent of its lines
};

// The part of a conversation that a rich edit control holds, as consecutive insertions.
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
