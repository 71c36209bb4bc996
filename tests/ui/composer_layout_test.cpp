#include "ui/conversation/composer_layout.h"

#include <gtest/gtest.h>

namespace conversation {
namespace {

constexpr toolkit::Dpi kNormal{96};

TEST(ComposerLayout, FieldsFillTheWindowBelowTheirLabels) {
  const ComposerParts parts = ComposerLayout(450, 300, 60, 15, kNormal);
  EXPECT_EQ(parts.recipients, (Area{8, 82, 143, 292}));
  EXPECT_EQ(parts.text, (Area{151, 82, 442, 292}));
  EXPECT_EQ(parts.toLabel, (Area{8, 64, 143, 79}));
  EXPECT_EQ(parts.messageLabel, (Area{151, 64, 442, 79}));
}

// A tool bar in two lines, or a window manager that ignores the least size.
TEST(ComposerLayout, NeverTurnsAFieldInsideOut) {
  for (const int side : {0, 20, 100}) {
    const ComposerParts parts = ComposerLayout(side, side, 110, 15, kNormal);
    for (const Area& area : {parts.recipients, parts.text}) {
      EXPECT_GE(area.Width(), 0) << side;
      EXPECT_GE(area.Height(), 0) << side;
    }
  }
}

TEST(ComposerLayout, GrowsWithTheScreensScaling) {
  const ComposerParts parts = ComposerLayout(900, 600, 120, 30, {192});
  EXPECT_EQ(parts.recipients, (Area{16, 164, 286, 584}));
}

TEST(ComposerLayout, OpensInTheMiddleButNeverBeyondTheCorner) {
  EXPECT_EQ(CentredIn({0, 40, 1000, 740}, 400, 300), (Area{300, 240, 700, 540}));
  EXPECT_EQ(CentredIn({10, 20, 110, 120}, 400, 300), (Area{10, 20, 410, 320}));
}

}  // namespace
}  // namespace conversation
