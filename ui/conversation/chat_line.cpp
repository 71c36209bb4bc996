#include "ui/conversation/chat_line.h"

#include <algorithm>

namespace conversation {
namespace {

constexpr char kLineBreak = '\n';

bool IsControl(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

std::string OneLine(std::string_view name) {
  std::string line(name);
  std::ranges::replace_if(line, IsControl, ' ');
  return line;
}

// With every line break, of whatever kind, as one byte.
std::string WithPlainBreaks(std::string_view text) {
  std::string plain;
  std::size_t breaks = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isBreak = text[i] == '\r' || text[i] == '\n';
    if (text[i] == '\r' && text.substr(i + 1).starts_with('\n')) ++i;
    if (isBreak && breaks++ < kMostLineBreaks)
      plain += kLineBreak;
    else
      plain += IsControl(text[i]) && text[i] != '\t' ? ' ' : text[i];
  }
  return plain;
}

// Where a paragraph ends that has to be parted, the blank included.
std::size_t PartedLength(std::string_view paragraph) {
  const std::size_t blank = paragraph.substr(0, kLongestPiece).rfind(' ');
  return blank != std::string_view::npos && blank > kLongestPiece / 2 ? blank + 1 : kLongestPiece;
}

void AddParted(std::vector<std::string>& paragraphs, std::string_view paragraph) {
  const std::size_t most = paragraph.size() > kLongestParagraph ? kLongestPiece : kLongestParagraph;
  while (paragraph.size() > most) {
    const std::size_t length = PartedLength(paragraph);
    paragraphs.emplace_back(paragraph.substr(0, length));
    paragraph.remove_prefix(length);
  }
  paragraphs.emplace_back(paragraph);
}

}  // namespace

ChatLine MakeChatLine(std::string_view prefix, std::string_view sender, std::string_view text) {
  const std::string name = std::string(prefix) + OneLine(sender) + ':';
  const std::string whole = name + '\t' + WithPlainBreaks(text.substr(0, text.find('\0')));
  ChatLine line{.head = name + ' ', .paragraphs = {}};
  for (std::size_t start = 0; start <= whole.size();) {
    const std::size_t end = std::min(whole.find(kLineBreak, start), whole.size());
    AddParted(line.paragraphs, std::string_view(whole).substr(start, end - start));
    start = end + 1;
  }
  return line;
}

}  // namespace conversation
