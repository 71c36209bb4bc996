// The lines of a chat: storage, paragraphs, plain text and markup.
#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "tests/support/in_code_page.h"
#include "ui/conversation/chat_export.h"
#include "ui/conversation/layout_cost.h"
#include "ui/conversation/paragraphs.h"

namespace conversation {
namespace {

using namespace std::string_literals;
using toolkit::Twips;

void Say(Conversation& said, std::string_view text, std::string_view sender = "anna", std::int32_t colour = 0) {
  said.Add({.prefix = {}, .sender = sender, .text = text, .colour = colour, .indent = Twips{500}});
}

std::string PlainText(const Conversation& said) {
  std::string text;
  WritePlainText(said, [&](std::string_view piece) { text += piece; });
  return text;
}

std::string PlainText(std::string_view text, std::string_view sender = "anna") {
  Conversation said;
  Say(said, text, sender);
  return PlainText(said);
}

std::string MarkupOf(const Conversation& said, MarkupStyle style = {}) {
  style.font = "Tahoma";
  style.maxIndent = {2000};
  style.paint = [](std::int32_t colour) {
    return colour == 0 ? std::nullopt : std::optional(static_cast<std::uint32_t>(colour));
  };
  std::string text;
  WriteMarkup(said, BeginOf(said), EndOf(said), style, [&](std::string_view piece) { text += piece; });
  return text;
}

constexpr char kFirst[] = "\\pard\\fi-500\\li500\\tx500";

TEST(Conversation, KeepsEveryLineUnchanged) {
  Conversation said;
  const std::string texts[] = {"", std::string(60000, 'x'), "a\r\nb\0c"s, std::string(70000, '\xFF')};
  for (std::size_t i = 0; i < 1000; ++i)
    said.Add({"12:00 ", "bob" + std::to_string(i), texts[i % 4], static_cast<std::int32_t>(0x80000000u + i), {1000}});
  for (std::size_t i = 1000; i-- > 0;) {
    const ChatLine line = said.At(i);
    EXPECT_EQ(line.prefix, "12:00 ");
    EXPECT_EQ(line.sender, "bob" + std::to_string(i));
    EXPECT_EQ(line.text, texts[i % 4]);
    EXPECT_EQ(line.colour, static_cast<std::int32_t>(0x80000000u + i));
    EXPECT_EQ(line.indent.value, 1000);
  }
}

TEST(Conversation, DropsTheOldestLinesOfTheLargest) {
  constexpr std::size_t kMegabyte = 1 << 20;
  Conversation small(2 * kMegabyte, 3 * kMegabyte), large(2 * kMegabyte, 3 * kMegabyte);
  const std::string text(1000, 'x');
  for (int i = 0; i < 1000; ++i) Say(small, text);
  for (int i = 0; i < 5000; ++i) Say(large, text + std::to_string(i));
  EXPECT_EQ(small.First(), 0u);
  const std::size_t left = large.End() - large.First();
  EXPECT_GT(left, (2 * kMegabyte - 65536) / 1012);
  EXPECT_LE(left, 2 * kMegabyte / 1012);
  EXPECT_EQ(large.At(large.First()).text, text + std::to_string(large.First()));

  Say(large, std::string(kMaxBlanks + 1, ' '));
  const std::string whole = PlainText(large);
  std::string box = whole;
  box.erase(box.find("  "), 1);
  for (const std::size_t from : {0u, 5u, 2000u})
    EXPECT_EQ(Uncut(large, BeginOf(large), box.substr(0, from), box.substr(from)), whole.substr(from));
  EXPECT_EQ(Uncut(large, BeginOf(large), "", box.substr(0, 3000)), "") << "nothing is cut";
  EXPECT_EQ(ShownInEdit(std::string(1000, ' ')), std::string(kMaxBlanks, ' '));
  EXPECT_EQ(SizeInEdit(std::string(1000, ' ')), kMaxBlanks);
  for (int i = 0; i < 500; ++i) Say(small, text);
  EXPECT_EQ(small.First(), 0u);
  EXPECT_LT(large.End() - large.First(), left);
  large.Clear();
  Say(large, "hi");
  EXPECT_EQ(PlainText(large), "anna:\thi\r\n");
  small.Clear();
  for (const std::size_t limit : {std::size_t{10}, kMegabyte}) {  // of one conversation, or of all
    Conversation tiny(limit, kMegabyte + 10 - limit);
    for (const char letter : {'x', 'y'}) Say(tiny, std::string(40000, letter));
    EXPECT_TRUE(PlainText(tiny).starts_with("... 1\r\nanna:\tyyy")) << "the newest line is kept";
    const std::string markup =
        "\\pard\\fi0\\li0\\tx0\\cf0 ... 1\\par\n"s + kFirst + " anna:\\'09" + std::string(60, 'y');
    EXPECT_NE(MarkupOf(tiny).find(markup), std::string::npos);
  }
}

TEST(PlainText, IsNameColonTabTextAndEveryLineBreak) {
  EXPECT_EQ(PlainText("a\r\nb\rc\nd\n\re\r\r\n"), "anna:\ta\r\nb\r\nc\r\nd\r\n\r\ne\r\n\r\n\r\n");
  Conversation timed;
  timed.Add({"18:46:02 ", "anna", "", 0, {}});
  EXPECT_EQ(PlainText(timed), "18:46:02 anna:\t\r\n");
}

// Text from the network may contain any byte.
TEST(PlainText, ReplacesControlBytes) {
  EXPECT_EQ(PlainText("a\tb\x01\x07\x0B\x0C\x1F\x7F\0\xE0"s), "anna:\ta\tb       \xE0\r\n");
  EXPECT_EQ(PlainText("yes", "eve\r\nanna:\tno\0!"s), "eve  anna: no !:\tyes\r\n") << "a name of two lines";
}

// Iterating forwards and backwards finds the same paragraphs.
TEST(Paragraphs, AreTheSameInBothDirections) {
  Conversation said;
  for (const char* text : {"a\r\n\nb\r", "", "\n", "\r\r\n\n\r", "end"}) Say(said, text);
  std::vector<Position> positions;
  for (Position at = BeginOf(said); at < EndOf(said); at = ParagraphAt(said, at).next) positions.push_back(at);
  EXPECT_EQ(positions.size(), 4u + 1 + 2 + 5 + 1);
  Position at = EndOf(said);
  for (; !positions.empty(); positions.pop_back()) EXPECT_EQ(at = PreviousParagraph(said, at), positions.back());
}

// A paragraph weighs 20 and its bytes: the first five weigh 24 + 1, 20, 20 + 1, 20 and 24.
TEST(Paragraphs, AreWeighedUpToALimit) {
  Conversation said;
  for (const char* text : {"a\r\n\nb\r", "", "\n", "end"}) Say(said, text);
  const Position begin = BeginOf(said), end = EndOf(said);
  for (const auto& [limit, weight] : {std::pair{109u, 110u}, {110u, 134u}, {1000u, 181u}})
    EXPECT_EQ(WeightBetween(said, begin, end, limit), weight) << limit;
  for (const auto& [weight, to] : {std::pair{0u, Position{0, 3}}, {110u, {2, 0}}, {111u, {2, 1}}, {1000u, {4, 0}}})
    EXPECT_EQ(GoForward(said, begin, weight), to) << weight;
  for (const auto& [weight, to] : {std::pair{0u, Position{3, 0}}, {27u, {3, 0}}, {28u, {2, 1}}, {1000u, {0, 0}}})
    EXPECT_EQ(GoBack(said, end, weight), to) << weight;
}

TEST(ShownParts, AreCountedAndMergedWhileSmall) {
  ShownParts parts;
  const auto part = [](std::size_t line, std::size_t size, int indent) {
    return ShownPart{{line, 0}, {line + 1, 0}, 2 * size, size, 1, Twips{indent}};
  };
  parts.AddLater(part(1, 4000, 300));
  parts.AddLater(part(2, ShownParts::kSmall - 4000, 500));
  parts.AddLater(part(3, 1, 400));
  parts.AddEarlier(part(0, 10, 100));
  const auto sums = [&] {
    return std::tuple(parts.Characters(), parts.Weight(), parts.Paragraphs(), parts.Widest().value);
  };
  EXPECT_EQ(sums(), std::tuple(8214u, 4107u, 4u, 500));
  for (const auto& [character, line, offset] :
       {std::tuple{19u, 0u, 19u}, {20u, 1u, 0u}, {8211u, 1u, 8191u}, {8212u, 3u, 0u}, {9999u, 3u, 2u}}) {
    EXPECT_EQ(parts.Find(character).first.line, line);
    EXPECT_EQ(parts.Find(character).offset, offset);
  }
  EXPECT_EQ(parts.DropFirst().first.line, 0u);
  EXPECT_EQ(parts.DropLast().first.line, 3u);
  EXPECT_EQ(sums(), std::tuple(8192u, 4096u, 2u, 500));
  EXPECT_EQ(parts.FirstPart().paragraphs, 2u);
  EXPECT_EQ(parts.End(), (Position{3, 0}));
}

constexpr char kHead[] = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fnil\\fcharset0 Tahoma;}}{\\colortbl ;";

TEST(Markup, HasColoursAndHangingIndents) {
  Conversation said;
  Say(said, "hi");
  Say(said, "x\r\ny", "bob", 0x0302FF);
  Say(said, "z", "bob", 0x0302FF);
  Say(said, "z", "bob", 0x0302FF);
  Say(said, "w");
  EXPECT_EQ(MarkupOf(said), kHead + "\\red255\\green2\\blue3;}\n\\f0\\fs17"s + kFirst +
                                "\\cf0 anna:\\'09hi\\par\n\\cf1 bob:\\'09x\\par\n\\pard\\li500\\tx500 y\\par\n" +
                                kFirst + " bob:\\'09z\\par\nbob:\\'09z\\par\n\\cf0 anna:\\'09w\\par\n}\n");
}

TEST(Markup, EscapesTextThatLooksLikeMarkup) {
  Conversation said;
  Say(said, "{\\rtf1 \\b x}\t  caf\xE9~ ");
  EXPECT_EQ(MarkupOf(said), kHead + "}\n\\f0\\fs17"s + kFirst +
                                "\\cf0 anna:\\'09\\{\\\\rtf1 \\\\b x\\}\\'09 \\'20caf\\'e9~ \\par\n}\n");
}

TEST(Markup, NamesTheCodePageAndKeepsDoubleByteCharacters) {
  const support::InCodePage japanese(932);
  Conversation said;
  said.Add({"", "x", "\x83\x5C\x83\x61z\x83", 0, {99999}});
  const std::string text = MarkupOf(said, {.codePage = 932, .charset = 128});
  EXPECT_NE(text.find("\\ansicpg932\\"), std::string::npos);
  EXPECT_NE(text.find("\\fcharset128 Tahoma"), std::string::npos);
  EXPECT_NE(text.find("\\fi-2000\\li2000\\tx2000"), std::string::npos) << "an indent that leaves room";
  EXPECT_NE(text.find("'09\\'83\\'5c\\'83\\'61z\\'83\\par"), std::string::npos) << text;
}

TEST(Markup, CutsLongParagraphsIntoShortRuns) {
  Conversation said;
  const std::string run(50, 'x');
  Say(said, run + run + run + run + "y");
  const std::string runs = "'09" + run + "\\f1 " + run + "\\f0 " + run + "\\f1 " + run + "\\f0 y\\par\n";
  const std::string text = MarkupOf(said, {.forEdit = true}), font = "{\\f1\\fswiss\\fcharset0 Tahoma;}";
  for (const std::string& part : {runs, font}) EXPECT_NE(text.find(part), std::string::npos) << text;
}

TEST(LayoutCost, PortionUsesRecentTimesAndCapacityTheBest) {
  LayoutCost cost;
  cost.AddTime(1000, 50);
  EXPECT_EQ(cost.Portion(50) + cost.Capacity(50), 2000u) << "one measurement is enough";
  for (const int milliseconds : {2, 1, 2}) cost.AddTime(1000, milliseconds);
  EXPECT_EQ(cost.Portion(50), 25000u);
  cost.AddTime(1000, 100);
  EXPECT_EQ(cost.Portion(25), 250u);
  EXPECT_EQ(cost.Capacity(25), 25000u);
  cost.AddGrowth(1000, 1 << 20);
  EXPECT_EQ(cost.MemoryOf(1000), 0u) << "the sample is too small";
  cost.AddGrowth(99000, 9 << 20);
  EXPECT_EQ(cost.MemoryOf(100000), 10u << 20);
  cost.AddGrowth(100000, 0);
  EXPECT_EQ(cost.MemoryOf(100000), 10u << 20) << "reuse of freed memory is no lower cost";
}

}  // namespace
}  // namespace conversation
