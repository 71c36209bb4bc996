#include "ui/toolkit/list_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "core/text.h"
#include "tests/support/error_of.h"
#include "tests/support/rows.h"

namespace toolkit {
namespace {

TEST(ListRows, KeysAreUniqueAndExact) {
  ListRows rows;
  rows.Add({.text = "x", .key = "g"});
  const ListRow& second = rows.Add({.text = "y", .key = "G"});
  const ListRow& accented = rows.Add({.text = "\xC9mile"});
  rows.Add({.text = "no key"});
  const std::uint64_t changes = rows.SetChanges();
  EXPECT_EQ(support::ErrorOf([&] { rows.Add({.text = "z", .key = "G"}); }), 35602);
  EXPECT_EQ(support::RowsAndIcons(rows), "x=0 y=0 \xC9mile=0 no key=0 ");
  EXPECT_EQ(rows.SetChanges(), changes);
  EXPECT_EQ(rows.FindKey("G"), &second);
  EXPECT_EQ(rows.FindText("Y"), nullptr);
  EXPECT_EQ(rows.FindTextIgnoringCase("\xE9MILE"), &accented) << "folded by the code page";
}

TEST(ListRows, CountersMoveOnRealChangesOnly) {
  ListRows rows;
  const ListRow& row = rows.Add({.text = "anna", .icon = 2, .smallIcon = 2, .foreColour = 5});
  const auto changes = [&] { return std::pair(rows.SetChanges(), rows.LookChanges()); };
  const auto before = changes();
  rows.SetSubText(row, "");
  rows.SetIcon(row, 2);
  rows.SetForeColour(row, 5);
  rows.SetSelected(row, true);
  rows.SetSelected(row, true);
  EXPECT_EQ(changes(), before);
  EXPECT_EQ(rows.SelectedCount(), 1u);
  rows.SetSubText(row, "away");
  rows.SetIcon(row, 3);
  rows.SetForeColour(row, 6);
  EXPECT_EQ(changes(), std::pair(before.first, before.second + 3));
  EXPECT_EQ(row.smallIcon, 3);
  rows.Remove(row);
  EXPECT_EQ(rows.SelectedCount(), 0u);
  EXPECT_EQ(rows.TextBytes(), 0u);
}

// Gaps are closed late and the hash chains are threaded through the rows: compared with a plain list over many random
// steps, row numbers and look-ups must never tell the difference.
TEST(ListRows, BehavesLikeAPlainList) {
  std::mt19937 random(1);
  const auto below = [&](std::size_t n) { return std::uniform_int_distribution<std::size_t>(0, n - 1)(random); };
  ListRows rows;
  std::vector<std::string> plain;
  for (int step = 0; step < 20000; ++step) {
    const std::string name = (below(2) ? "user" : "USER") + std::to_string(below(400));
    const auto action = below(1000);
    if (action == 0) {
      rows.Clear();
      plain.clear();
    } else if (action < 550) {
      rows.Add({.text = name});
      plain.push_back(name);
    } else if (const ListRow* row = rows.FindText(name)) {
      plain.erase(std::ranges::find(plain, name));
      rows.Remove(*row);
    } else {
      EXPECT_EQ(std::ranges::count(plain, name), 0);
    }
    ASSERT_EQ(rows.Count(), plain.size());
    if (step % 7 != 0 || plain.empty()) continue;
    const std::size_t index = below(plain.size());
    ASSERT_EQ(rows.At(index).text, plain[index]);
    const RowId id = rows.Ids()[index];
    ASSERT_EQ(rows.FindId(id), &rows.At(index));
    ASSERT_EQ(rows.PlaceOf(id), index);
    const auto same = [&](const std::string& text) { return core::EqualIgnoringCase(text, plain[index]); };
    const auto first = static_cast<std::size_t>(std::ranges::find_if(plain, same) - plain.begin());
    ASSERT_EQ(rows.FindTextIgnoringCase(plain[index]), &rows.At(first));
    ASSERT_EQ(rows.AllWithText(plain[index]).size(), static_cast<std::size_t>(std::ranges::count_if(plain, same)));
  }
}

}  // namespace
}  // namespace toolkit
