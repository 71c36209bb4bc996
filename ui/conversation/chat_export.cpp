#include "ui/conversation/chat_export.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "core/text.h"

namespace conversation {
namespace {

constexpr char kLineEnd[] = "\r\n";
constexpr char kLost[] = "... ";  // followed by the number of dropped lines
constexpr std::size_t kPieceSize = 64u << 10;
constexpr std::size_t kLongParagraph = 200, kRunLength = 50;

std::string_view TakeCharacter(std::string_view& text) {
  const std::string_view character = core::FirstCharacter(text);
  text.remove_prefix(character.size());
  return character;
}

// Buffers the output into large pieces.
class Output {
 public:
  explicit Output(const Sink& sink) : sink_(sink) {}

  Output& operator<<(std::string_view text) {
    piece_ += text;
    if (piece_.size() >= kPieceSize) Flush();
    return *this;
  }
  Output& operator<<(int number) { return *this << std::string_view(std::to_string(number)); }
  void Flush() {
    if (!piece_.empty()) sink_(std::exchange(piece_, {}));
  }

 private:
  const Sink& sink_;
  std::string piece_;
};

std::string LostText(const Conversation& said) { return kLost + std::to_string(said.First()); }

class Markup {
 public:
  Markup(const MarkupStyle& style, const Sink& sink) : style_(style), out_(sink) {}

  void Write(const Conversation& said, Position from, Position to) {
    Head(said, from, to);
    if (from == BeginOf(said) && said.First() > 0) {
      SetFormat(0, true, 0);
      Text(LostText(said));
      out_ << "\\par\n";
    }
    while (from < to) {
      const Paragraph paragraph = ParagraphAt(said, from);
      Write(paragraph);
      from = paragraph.next;
    }
    out_ << "}\n";
    out_.Flush();
  }

 private:
  void Head(const Conversation& said, Position from, Position to) {
    out_ << "{\\rtf1\\ansi\\ansicpg" << static_cast<int>(style_.codePage) << "\\deff0{\\fonttbl";
    Font(0, "nil");
    if (style_.forEdit) Font(1, "swiss");
    out_ << "}{\\colortbl ;";
    for (std::size_t line = from.line; Position{line} < to; ++line) AddColour(said.At(line).colour);
    out_ << "}\n\\f0\\fs" << style_.halfPoints;
  }

  void Font(int number, std::string_view family) {
    out_ << "{\\f" << number << "\\f" << family << "\\fcharset" << style_.charset << " " << style_.font << ";}";
  }

  void AddColour(std::int32_t colour) {
    const auto [entry, isNew] = colours_.try_emplace(colour, 0);
    if (!isNew) return;
    const auto rgb = style_.paint(colour);
    if (!rgb) return;
    entry->second = ++colourCount_;
    const auto part = [&](unsigned shift) { return static_cast<int>(*rgb >> shift & 0xFF); };
    out_ << "\\red" << part(0) << "\\green" << part(8) << "\\blue" << part(16) << ";";
  }

  void Write(const Paragraph& paragraph) {
    const int indent = std::min(paragraph.line.indent.value, style_.maxIndent.value);
    SetFormat(indent, paragraph.first, colours_.at(paragraph.line.colour));
    if (paragraph.first) {
      Text(HeadOf(paragraph.line));
      Text("\t");
    }
    Text(style_.forEdit ? ShownInEdit(paragraph.text) : Shown(paragraph.text));
    out_ << "\\par\n";
  }

  // Further paragraphs of a line are indented like the text of the first one: at the left edge they could be mistaken
  // for another user's line.
  void SetFormat(int indent, bool first, int colour) {
    const std::pair format{indent, first};
    const bool newFormat = std::exchange(format_, format) != format;
    const bool newColour = std::exchange(colour_, colour) != colour;
    if (newFormat) {
      out_ << "\\pard";
      if (first) out_ << "\\fi" << -indent;
      out_ << "\\li" << indent << "\\tx" << indent;
    }
    if (newColour) out_ << "\\cf" << colour;
    if (newFormat || newColour) out_ << " ";
  }

  void Text(std::string_view text) {
    if (style_.forEdit && text.size() > kLongParagraph) return InRuns(text);
    for (char before = ' '; !text.empty();) {
      const std::string_view character = TakeCharacter(text);
      Character(character, before);
      before = character[0];
    }
  }

  void InRuns(std::string_view text) {
    std::size_t inRun = 0;
    while (!text.empty()) {
      if (inRun >= kRunLength) {
        out_ << (std::exchange(otherFont_, !otherFont_) ? "\\f0 " : "\\f1 ");
        inRun = 0;
      }
      const std::string_view character = TakeCharacter(text);
      Character(character, '\0');
      inRun += character.size();
    }
  }

  // Consecutive blanks and tabs are escaped, because some readers drop them otherwise. Double-byte characters begin
  // above 0x7E.
  void Character(std::string_view character, char before) {
    const char c = character[0];
    if (static_cast<unsigned char>(c) > 0x7E || c == '\t' || (c == ' ' && before == ' '))
      for (const char byte : character) Number(static_cast<unsigned char>(byte));
    else if (c == '\\' || c == '{' || c == '}')
      out_ << "\\" << character;
    else
      out_ << character;
  }

  void Number(unsigned char byte) {
    constexpr char kDigits[] = "0123456789abcdef";
    const char text[] = {'\\', '\'', kDigits[byte >> 4], kDigits[byte & 0xF]};
    out_ << std::string_view(text, sizeof text);
  }

  const MarkupStyle& style_;
  Output out_;
  std::map<std::int32_t, int> colours_;  // indices in the colour table, 0 = the reader's default
  int colourCount_ = 0;
  std::optional<int> colour_;                   // as last written, like the format
  std::optional<std::pair<int, bool>> format_;  // indent, and whether it is the first paragraph of a line
  bool otherFont_ = false;
};

}  // namespace

void WritePlainText(const Conversation& said, const Sink& sink) {
  Output out(sink);
  if (said.First() > 0) out << LostText(said) << kLineEnd;
  for (Position at = BeginOf(said); at < EndOf(said);) {
    const Paragraph paragraph = ParagraphAt(said, at);
    if (paragraph.first) out << HeadOf(paragraph.line) << "\t";
    out << Shown(paragraph.text) << kLineEnd;
    at = paragraph.next;
  }
  out.Flush();
}

void WriteMarkup(const Conversation& said, Position from, Position to, const MarkupStyle& style, const Sink& sink) {
  Markup(style, sink).Write(said, from, to);
}

}  // namespace conversation
