#include "net/packet.h"

#include <gtest/gtest.h>

#include <string>

namespace net {
namespace {

using namespace std::string_literals;

TEST(Packet, IsTakenApartAtTheFirstBar) {
  const struct {
    std::string packet, sender, kind, argument;
  } kRows[] = {
      {"anna|C/ 4", "anna", "C/", " 4"},
      {"anna|M/", "anna", "M/", ""},
      {"anna|P/\xDF"
       "a|b|bob",
       "anna", "P/",
       "\xDF"
       "a|b|bob"},
      {"anna|M", "anna", "M", ""},
      {"anna|", "anna", "", ""},
      {"anna", "anna", "", ""},
      {"|M/x", "", "M/", "x"},
      {"", "", "", ""},
      {"a\0b|M/\0"s, "a\0b"s, "M/", "\0"s},
  };
  for (const auto& row : kRows) {
    const Packet taken = TakeApart(row.packet);
    EXPECT_EQ(taken.sender, row.sender) << row.packet;
    EXPECT_EQ(taken.kind, row.kind) << row.packet;
    EXPECT_EQ(taken.argument, row.argument) << row.packet;
  }
}

TEST(Packet, PrivateTextEndsAtTheLastBar) {
  const PrivateText message = SplitPrivate(
      "\xDF"
      "a|b|bob");
  EXPECT_TRUE(message.found);
  EXPECT_EQ(message.text,
            "\xDF"
            "a|b");
  EXPECT_EQ(message.recipient, "bob");
  EXPECT_FALSE(SplitPrivate("bob").found);
}

TEST(Packet, PrivateCommandTakesTheRecipientUpToTheFirstBlank) {
  const struct {
    std::string_view line, command;
  } kRows[] = {
      {"bob \xDEsee you", "P/\xDEsee you|bob"},
      {"  bob    \xDEx  ", "P/\xDEx|bob"},
      {"bob \xDF  two blanks lead", "P/\xDF  two blanks lead|bob"},
      {"John Smith \xDFhello", "P/Smith \xDFhello|John"},
      {"bob", "P/|"},
      {"bob ", "P/|"},
      {"", "P/|"},
  };
  for (const auto& row : kRows) EXPECT_EQ(PrivateCommand(row.line), row.command) << row.line;
}

}  // namespace
}  // namespace net
