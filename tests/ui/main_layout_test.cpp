#include "ui/main/main_layout.h"

#include <gtest/gtest.h>

namespace mainwindow {
namespace {

struct Box {
  int left, top, right, bottom;
  friend bool operator==(const Box&, const Box&) = default;
};

// A task bar at the left and one at the bottom, so that no edge of the work area is an edge of the screen by chance.
TEST(MainLayout, CornersAreThoseOfTheWorkArea) {
  constexpr Box area{60, 10, 1024, 738}, window{300, 300, 467, 607};
  EXPECT_EQ(CornerPlace(0, area, window), (Box{60, 10, 227, 317}));
  EXPECT_EQ(CornerPlace(1, area, window), (Box{857, 10, 1024, 317}));
  EXPECT_EQ(CornerPlace(2, area, window), (Box{60, 431, 227, 738}));
  EXPECT_EQ(CornerPlace(3, area, window), (Box{857, 431, 1024, 738}));
}

TEST(MainLayout, TheRosterFillsWhatToolbarAndStatusLineLeave) {
  const MainBands shown = BandsOf(300, 44, 20, true), hidden = BandsOf(300, 44, 20, false);
  EXPECT_EQ(shown.rosterTop, 44);
  EXPECT_EQ(shown.rosterHeight, 236);
  EXPECT_EQ(shown.statusTop, 280);
  EXPECT_EQ(hidden.rosterHeight, 256);
  EXPECT_EQ(BandsOf(30, 44, 20, true).rosterHeight, 0);
  EXPECT_EQ(StatColumnWidth(Twips{2400}, Twips{1300}), Twips{850});
}

}  // namespace
}  // namespace mainwindow
