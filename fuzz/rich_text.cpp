// Arbitrary lines as a conversation: its markup, read back, is its plain text in the lines' colours. And as the text of
// an alert, which is broken into lines without losing a character. The first byte chooses the code page, the width of
// the alert, and whether the markup is for the edit control, where long runs of blanks are cut and must be restored.
// Each input line is a line of the conversation: colour, length of the sender's name, sender, text; byte 1 stands for a
// line break.
#include <optional>
#include <string>
#include <vector>

#include "fuzz/fuzz_target.h"
#include "ui/conversation/chat_export.h"
#include "ui/conversation/paragraphs.h"
#include "ui/conversation/popup_layout.h"

namespace {

constexpr std::string_view kLineEnd = "\r\n";

// A minimal rich text reader: text, paragraphs, colours and groups.
class Reader {
 public:
  explicit Reader(std::string_view markup) : rest_(markup) {
    while (!rest_.empty()) Take();
    fuzz::Require(depth_ == 0);
  }

  std::string text;
  std::vector<int> colours;  // of the paragraphs

 private:
  void Take() {
    const unsigned char c = fuzz::TakeByte(rest_);
    if (c == '{') return static_cast<void>(++depth_);
    if (c == '}') return fuzz::Require(--depth_ >= 0);
    if (c == '\\') return TakeControl();
    if (c == '\n' || c == '\r') return;
    fuzz::Require(c >= ' ' && c < 0x80);
    Put(c);
  }

  // The font and colour tables are groups inside the outer one; text is directly in it.
  void Put(unsigned char c) {
    if (depth_ == 1) text += static_cast<char>(c);
  }

  void TakeControl() {
    const unsigned char c = fuzz::TakeByte(rest_);
    if (c == '\\' || c == '{' || c == '}') return Put(c);
    if (c == '\'') return TakeHexByte();
    fuzz::Require(IsLetter(c));
    std::string word(1, static_cast<char>(c));
    while (!rest_.empty() && IsLetter(static_cast<unsigned char>(rest_.front()))) word += TakeChar();
    std::string number;
    while (!rest_.empty() && (IsDigit(rest_.front()) || (number.empty() && rest_.front() == '-'))) number += TakeChar();
    if (rest_.starts_with(' ')) rest_.remove_prefix(1);
    Apply(word, number);
  }

  void Apply(std::string_view word, const std::string& number) {
    if (word == "cf") colour_ = std::stoi(number);
    if (word != "par") return;
    text += kLineEnd;
    colours.push_back(colour_);
  }

  void TakeHexByte() {
    const int high = DigitOf(TakeChar()), low = DigitOf(TakeChar());
    fuzz::Require(high >= 0 && low >= 0);
    Put(static_cast<unsigned char>(high * 16 + low));
  }

  char TakeChar() { return static_cast<char>(fuzz::TakeByte(rest_)); }
  static bool IsLetter(unsigned char c) { return c >= 'a' && c <= 'z'; }
  static bool IsDigit(char c) { return c >= '0' && c <= '9'; }
  static int DigitOf(char c) { return IsDigit(c) ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1; }

  std::string_view rest_;
  int depth_ = 0, colour_ = -1;
};

void Say(conversation::Conversation& said, std::string_view line) {
  const std::int32_t colour = fuzz::TakeByte(line) % 4;
  const std::size_t length = fuzz::TakeByte(line) % 32;
  const std::string_view sender = line.substr(0, length);
  std::string text(line.substr(sender.size()));
  for (char& c : text)
    if (c == '\1') c = '\n';
  said.Add({.prefix = colour == 3 ? "12:00 " : "", .sender = sender, .text = text, .colour = colour, .indent = {900}});
}

// Colour 0 is the system's text colour; the others are numbered in order of first use.
std::vector<int> ColoursOf(const conversation::Conversation& said) {
  std::vector<int> colours, table;
  for (conversation::Position at = conversation::BeginOf(said); at < conversation::EndOf(said);) {
    const conversation::Paragraph paragraph = conversation::ParagraphAt(said, at);
    const int colour = paragraph.line.colour;
    std::size_t index = 0;
    while (index < table.size() && table[index] != colour) ++index;
    if (colour != 0 && index == table.size()) table.push_back(colour);
    colours.push_back(colour == 0 ? 0 : static_cast<int>(index) + 1);
    at = paragraph.next;
  }
  return colours;
}

std::optional<std::uint32_t> Paint(std::int32_t colour) {
  return colour == 0 ? std::nullopt : std::optional(static_cast<std::uint32_t>(colour));
}

bool IsGap(std::string_view text) {
  return text.empty() || text == " " || text == "\r" || text == "\n" || text == kLineEnd;
}

// Between two lines of an alert is a line break, the blank at which its text was broken, or nothing.
void CheckLines(std::string_view text, std::size_t width) {
  const auto fits = [width](std::string_view line) { return core::LeadingCharacters(line, width).size(); };
  std::string_view rest = text;
  for (const std::string_view line : conversation::BreakLines(text, fits)) {
    const auto gap = static_cast<std::size_t>(line.data() - rest.data());
    fuzz::Require(IsGap(rest.substr(0, gap)) && line.find_first_of(kLineEnd) == std::string_view::npos);
    fuzz::Require(fits(line) == line.size() || core::FirstCharacter(line).size() == line.size());
    rest.remove_prefix(gap + line.size());
  }
  fuzz::Require(IsGap(rest));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view lines = fuzz::TextOf(data, size);
  const unsigned char choice = fuzz::TakeByte(lines);
  fuzz::ChooseCodePage(choice);
  CheckLines(lines, choice % 32);
  conversation::Conversation said;
  while (!lines.empty()) Say(said, fuzz::TakeLine(lines));

  std::string plain, markup;
  conversation::WritePlainText(said, [&](std::string_view piece) { plain += piece; });
  const conversation::MarkupStyle style{
      .font = "Tahoma", .maxIndent = {2000}, .paint = Paint, .forEdit = (choice & 1) != 0};
  conversation::WriteMarkup(said, BeginOf(said), EndOf(said), style, [&](std::string_view piece) { markup += piece; });
  const Reader reader(markup);
  const std::string whole = Uncut(said, BeginOf(said), "", reader.text);
  fuzz::Require((whole.empty() ? reader.text : whole) == plain);
  fuzz::Require(reader.colours == ColoursOf(said));
  return 0;
}
