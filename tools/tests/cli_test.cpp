// The command line's view of a segment, and its conversion of texts.
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "core/text.h"
#include "tests/support/in_code_page.h"
#include "tools/cli/report.h"
#include "tools/cli/send.h"
#include "tools/wire/address.h"
#include "tools/wire/code_page_text.h"

namespace cli {
namespace {

// The events of a packet, without their times, each followed by a semicolon.
std::string EventsOf(SegmentView& view, const std::string& packet) {
  std::string lines;
  for (const Event& event : view.Take({.bytes = packet, .sender = {}}))
    lines += EventLine(event, {.texts = true, .answering = false}).substr(sizeof "00:00:00") + ";";
  return lines;
}

TEST(SegmentView, ReportsEachChangeOnce) {
  const struct {
    std::string packet, events;
  } kRows[] = {
      {"_dora|C/ 4", ""},
      {"bob|L/", ""},
      {"bob|C/ 255", "joined  bob;colour  bob: #FF0000;"},
      {"bob|S/1", "status  bob: Alerts Only;"},
      {"bob|c/255", ""},
      {"bob|S/ 1", ""},
      {"bob|S/7", ""},
      {"bob|C/99999999999", ""},
      {"bob|M/bob is now on the network", ""},
      {"bob|M/\xDF\x1B[2J", "alert   bob to everybody: \\x1B[2J;"},
      {"bob|M/\xDEhi", "chat    bob to everybody: hi;"},
      {"bob|P/\xDF\x61|b|J\xFCrg Blank", "alert   bob to J\xC3\xBCrg Blank: a|b;"},
      {"bob|P/\xDFnobody", ""},
      {"printer|B/paper", "joined  printer;notice  printer: paper;"},
      {"bob|L/", "left    bob;"},
      {"bob|L/", ""},
  };
  SegmentView view;
  for (const auto& row : kRows) EXPECT_EQ(EventsOf(view, row.packet), row.events) << row.packet;
  EXPECT_EQ(view.Users().size(), 1u);
  EXPECT_NE(view.Find("PRINTER"), nullptr);
}

TEST(SegmentView, IsBounded) {
  SegmentView view;
  for (std::size_t i = 0; i < SegmentView::kMaxUsers + 2; ++i)
    view.Take({.bytes = std::to_string(i) + "|M/", .sender = {}});
  EXPECT_EQ(view.Users().size(), SegmentView::kMaxUsers);
}

TEST(CodePageText, IsExactOrRefused) {
  const support::InCodePage restored(1252);
  const struct {
    int codePage;
    std::string utf8, bytes;
  } kRows[] = {{1252, "\xE2\x82\xAC\xC3\x9F", "\x80\xDF"},
               {1251, "\xD0\xAF", "\xDF"},
               {1258, "e", "e"},
               {932, "\xE3\x83\x9D", "\x83|"}};
  for (const auto& row : kRows) {
    wire::UseCodePage(row.codePage);
    EXPECT_EQ(wire::ToCodePage(row.utf8), row.bytes) << row.codePage;
    EXPECT_EQ(wire::ToUtf8(row.bytes), row.utf8) << row.codePage;
  }
  wire::UseCodePage(1251);
  EXPECT_TRUE(core::EqualIgnoringCase("\xDF", "\xFF"));  // a letter with case in this code page only
  EXPECT_EQ(wire::ToUtf8("a\x98z"), "a\xEF\xBF\xBDz");
  EXPECT_THROW(wire::ToCodePage("a\xE2\x98\xBA"), std::invalid_argument);
  EXPECT_THROW(wire::ToCodePage("\xFF"), std::invalid_argument);
  EXPECT_THROW(wire::UseCodePage(437), std::invalid_argument);
  wire::UseCodePage(1252);
}

TEST(Address, IsWrittenInOneWayOnly) {
  EXPECT_EQ(wire::ParseHost("10.99.0.255"), 0x0A6300FFu);
  EXPECT_EQ(wire::HostText(0x0A6300FF), "10.99.0.255");
  for (const char* wrong :
       {"", "10.99.0", "10.99.0.1.", "10.99.0.1.2", "10.99.0.256", "010.99.0.1", "10.99..1", "-1.9.0.1"})
    EXPECT_THROW(wire::ParseHost(wrong), std::invalid_argument) << wrong;
}

TEST(ReadText, IsBoundedAndDropsTrailingLineEnds) {
  std::istringstream two("one\ntwo\r\n"), endless(std::string(kMaxTyped + 1, 'x'));
  EXPECT_EQ(ReadText(two), "one\ntwo");
  EXPECT_THROW(ReadText(endless), UsageError);
}

}  // namespace
}  // namespace cli
