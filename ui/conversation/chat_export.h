// A conversation written out: as plain text, and as the markup of a rich text file, which the text box of the chat
// window reads too.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/files.h"
#include "ui/conversation/paragraphs.h"

namespace conversation {

// What is written comes piece by piece: a conversation may be too large to stand in memory twice.
using core::Sink;

// A line for each paragraph, ended by CR LF.
void WritePlainText(const Conversation& said, const Sink& sink);

struct MarkupStyle {
  unsigned codePage = 1252;  // of the text
  std::string font{};
  int halfPoints = 17;
  toolkit::Twips maxIndent{};

  // The colour to paint a line's colour in, 0x00BBGGRR; none stands for the reader's own text colour.
  std::function<std::optional<std::uint32_t>(std::int32_t)> paint{};

  // Long paragraphs in short pieces that differ in nothing that can be seen. A rich text box may lay out each stretch
  // of one format at a cost that grows with the square of its length.
  bool shortRuns = false;
};

// The paragraphs from one place to another, from < to.
void WriteMarkup(const Conversation& said, Position from, Position to, const MarkupStyle& style, const Sink& sink);

}  // namespace conversation
