// One line of a conversation in the form in which it is shown.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace conversation {

// A rich text box lays paragraphs out at a cost, in time and in memory, that grows with the square of their length, and
// some that grows with the square of their number in one insertion. One datagram of 60,000 bytes would stop the
// program, so a longer paragraph is parted into pieces, at blanks where there are any, and of more line breaks the last
// ones become blanks.
inline constexpr std::size_t kLongestParagraph = 1000, kLongestPiece = 100, kMostLineBreaks = 500;

struct ChatLine {
  std::string head;  // "anna: ", with the time in front where it is added; its width is the line's hanging indent

  // "anna:", a tab and the text; more than one when the text has line breaks. None ends in a line break.
  std::vector<std::string> paragraphs;
};

// `prefix` is empty or ends in a blank. The text ends at a zero byte, as every text of a control does; other control
// bytes, which a rich text box would take for cell marks and page breaks, become blanks. A name stays in one paragraph
// whatever it holds, so that nobody can write a line that looks like somebody else's.
ChatLine MakeChatLine(std::string_view prefix, std::string_view sender, std::string_view text);

}  // namespace conversation
