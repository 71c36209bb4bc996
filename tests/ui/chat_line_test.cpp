#include "ui/conversation/chat_line.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace conversation {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

Texts ParagraphsOf(std::string_view sender, std::string_view text) { return MakeChatLine("", sender, text).paragraphs; }

TEST(ChatLine, IsNameColonTabText) {
  const ChatLine plain = MakeChatLine("", "anna", "hi");
  EXPECT_EQ(plain.head, "anna: ");
  EXPECT_EQ(plain.paragraphs, Texts{"anna:\thi"});
  const ChatLine timed = MakeChatLine("18:46:02 ", "anna", "");
  EXPECT_EQ(timed.head, "18:46:02 anna: ");
  EXPECT_EQ(timed.paragraphs, Texts{"18:46:02 anna:\t"});
}

TEST(ChatLine, EveryKindOfLineBreakEndsAParagraph) {
  EXPECT_EQ(ParagraphsOf("anna", "a\r\nb\rc\nd\n\re"), (Texts{"anna:\ta", "b", "c", "d", "", "e"}));
  EXPECT_EQ(ParagraphsOf("anna", "a\r\n"), (Texts{"anna:\ta", ""}));
}

// What comes from the network may hold anything.
TEST(ChatLine, BytesThatAreNoText) {
  EXPECT_EQ(ParagraphsOf("anna", "a\tb\x01\x07\x0B\x0C\x1F\x7F\xE0"), Texts{"anna:\ta\tb      \xE0"});
  EXPECT_EQ(ParagraphsOf("anna", "seen\0hidden"s), Texts{"anna:\tseen"});
  EXPECT_EQ(ParagraphsOf("anna", "{\\rtf1 \\b x}"), Texts{"anna:\t{\\rtf1 \\b x}"});
  EXPECT_EQ(ParagraphsOf("eve\r\nanna:\tno\0!"s, "yes"), Texts{"eve  anna: no !:\tyes"}) << "a name of two lines";
}

std::string Joined(const Texts& paragraphs) { return std::accumulate(paragraphs.begin(), paragraphs.end(), ""s); }

std::size_t Longest(const Texts& paragraphs) {
  return std::ranges::max(paragraphs, {}, [](const std::string& text) { return text.size(); }).size();
}

TEST(ChatLine, LongParagraphsArePartedAndNothingIsLost) {
  std::string words;
  while (words.size() < 60000) words += "seven7 ";
  for (const std::string& text : {std::string(60000, 'x'), words}) {
    const Texts paragraphs = ParagraphsOf("anna", text);
    EXPECT_LE(Longest(paragraphs), kLongestParagraph);
    EXPECT_EQ(Joined(paragraphs), "anna:\t" + text);
  }
  for (const std::string& part : ParagraphsOf("anna", words)) EXPECT_EQ(part.back(), ' ') << "parted inside a word";
  EXPECT_EQ(ParagraphsOf("anna", std::string(kLongestParagraph - 6, 'x')).size(), 1u)
      << "what people write stays whole";
  EXPECT_LE(Longest(ParagraphsOf(std::string(60000, 'n'), "x")), kLongestParagraph);
}

TEST(ChatLine, TooManyLineBreaksBecomeBlanks) {
  const Texts paragraphs = ParagraphsOf("anna", std::string(60000, '\n'));
  EXPECT_LE(paragraphs.size(), kMostLineBreaks + 1 + 60000 / kLongestPiece);
  EXPECT_EQ(Joined(paragraphs), "anna:\t" + std::string(60000 - kMostLineBreaks, ' '));
}

}  // namespace
}  // namespace conversation
