// Export of a conversation: as plain text, and as rich text markup, which the rich edit control of the chat window
// reads too.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/files.h"
#include "ui/conversation/paragraphs.h"

namespace conversation {

// Receives the output piece by piece: a conversation may be too large for a second copy in memory.
using core::Sink;

// One line per paragraph, ended by CR LF.
void WritePlainText(const Conversation& said, const Sink& sink);

struct MarkupStyle {
  unsigned codePage = 1252;  // of the text
  int charset = 0;           // of the font: a constant of Windows, such as SHIFTJIS_CHARSET
  std::string font{};
  int halfPoints = 17;
  toolkit::Twips maxIndent{};

  // Converts a line's colour to 0x00BBGGRR; nothing means the reader's default text colour.
  std::function<std::optional<std::uint32_t>(std::int32_t)> paint{};

  // For a rich edit control, which may take time quadratic in the length of a run: splits long paragraphs into short
  // runs with invisible differences in format, and cuts long runs of blanks (ShownInEdit).
  bool forEdit = false;
};

// Writes the paragraphs between two positions, from < to.
void WriteMarkup(const Conversation& said, Position from, Position to, const MarkupStyle& style, const Sink& sink);

}  // namespace conversation
