#include "ui/conversation/recipients.h"

#include <gtest/gtest.h>

#include "tests/support/fake_roster.h"

namespace conversation {
namespace {

class RecipientsTest : public testing::Test {
 protected:
  // "text:icon" of each row.
  std::string Rows() const {
    std::string rows;
    for (std::size_t i = 0; i < recipients.Rows().Count(); ++i) {
      const toolkit::ListRow& row = recipients.Rows().At(i);
      EXPECT_EQ(row.icon, row.smallIcon);
      rows += row.text + ":" + std::to_string(row.icon) + " ";
    }
    return rows;
  }

  support::FakeRoster roster;
  Recipients recipients{roster};
};

TEST_F(RecipientsTest, EachNameOnceWhateverItsCaseAndHowOftenItWasChosen) {
  recipients.AddRecipients("bob|Carla|bob|CARLA|");
  recipients.AddRecipient("BOB");
  EXPECT_EQ(Rows(), "bob:2 Carla:2 ");
  EXPECT_TRUE(recipients.IsRecipient("cARLA"));
  EXPECT_FALSE(recipients.IsRecipient("carl"));
}

// A sender may call himself so; an answer to him goes to everybody, and then to nobody twice.
TEST_F(RecipientsTest, EverybodyStandsAloneInAnySpelling) {
  recipients.AddRecipients("bob|anna|");
  recipients.AddRecipients("(All)|");
  EXPECT_EQ(Rows(), "(All):1 ");
  recipients.AddRecipients("dora|(All)|");
  EXPECT_EQ(Rows(), "(All):1 ");
  Recipients shouted{roster};
  shouted.AddRecipients("bob|(ALL)|anna|");
  ASSERT_EQ(shouted.Rows().Count(), 1u);
  EXPECT_TRUE(shouted.IsEverybody());
}

TEST_F(RecipientsTest, RowsShowWhatTheRosterKnows) {
  roster.blocked = {"anna"};
  roster.colours = {{"Anna", 255}};
  recipients.AddRecipients("Anna|bob|");
  EXPECT_EQ(Rows(), "Anna:3 bob:2 ");
  EXPECT_EQ(recipients.Rows().At(0).foreColour, 255);
  EXPECT_EQ(recipients.Rows().At(1).foreColour, 0);
}

TEST_F(RecipientsTest, EmptyFieldsNameNobody) {
  for (const char* list : {"", "|", "|||"}) EXPECT_FALSE(NamesAnybody(list)) << list;
  EXPECT_TRUE(NamesAnybody("|anna"));
  recipients.AddRecipients("||bob||");
  EXPECT_EQ(Rows(), "bob:2 ");
}

}  // namespace
}  // namespace conversation
