// The lines of a chat window as received: the model of the rich edit control, the exports and the clipboard.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "ui/toolkit/units.h"

namespace conversation {

struct ChatLine {
  std::string_view prefix;  // the time and a blank, or nothing
  std::string_view sender;
  std::string_view text;    // as received
  std::int32_t colour = 0;  // as toolkit::PaintColour takes it
  toolkit::Twips indent;    // width of prefix, sender, ":" and a blank in the font of the conversation
};

// Stored up to a limit in bytes for each conversation and another one for all together. Beyond them the oldest lines
// are dropped, of the largest conversation first; lines are numbered, so that the number of dropped ones is known.
class Conversation {
 public:
  static constexpr std::size_t kMaxOfConversation = 64u << 20, kMaxOfAll = 256u << 20;

  explicit Conversation(std::size_t maxOfConversation = kMaxOfConversation, std::size_t maxOfAll = kMaxOfAll);
  ~Conversation();
  Conversation(const Conversation&) = delete;
  Conversation& operator=(const Conversation&) = delete;

  // Strong exception guarantee.
  void Add(const ChatLine& line);

  // Numbering restarts at 0.
  void Clear();

  // The number of the oldest line, which is the number of dropped lines, and the one after the newest.
  std::size_t First() const { return blocks_.empty() ? end_ : blocks_.front().first; }
  std::size_t End() const { return end_; }

  // First() <= number < End(). The views are valid until the next change of any conversation.
  ChatLine At(std::size_t number) const;

 private:
  // Lines are packed, because thousands of small strings would need several times their size.
  struct Block {
    std::size_t first;  // line
    std::string bytes;
    std::vector<std::uint16_t> starts;  // of the lines in it

    void Append(const std::string& line);
  };

  void DropOldest();

  const std::size_t maxOfConversation_, maxOfAll_;
  std::deque<Block> blocks_;
  std::size_t size_ = 0, end_ = 0;
};

}  // namespace conversation
