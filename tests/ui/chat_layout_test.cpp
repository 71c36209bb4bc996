#include "ui/conversation/chat_layout.h"

#include <gtest/gtest.h>

namespace conversation {
namespace {

constexpr toolkit::Dpi kNormal{96};

TEST(ChatLayout, TheBarStaysWithinItsBounds) {
  constexpr Twips kHeight{6000};
  EXPECT_EQ(BarTopWithin({399}, kHeight), (Twips{400}));
  EXPECT_EQ(BarTopWithin({400}, kHeight), (Twips{400}));
  EXPECT_EQ(BarTopWithin({1234}, kHeight), (Twips{1234}));
  EXPECT_EQ(BarTopWithin({4300}, kHeight), (Twips{4300}));
  EXPECT_EQ(BarTopWithin({4301}, kHeight), (Twips{4300}));
  EXPECT_EQ(BarTopWithin({-9999}, kHeight), (Twips{400}));
  EXPECT_EQ(BarTopWithin({1000}, {1500}), (Twips{400})) << "a window too low for both bounds";
}

TEST(ChatLayout, PartsFillTheWindow) {
  const ChatParts parts =
      ChatLayout({.width = 320, .height = 360, .barTop = 66, .sendWidth = 40, .sendHeight = 46}, kNormal);
  EXPECT_EQ(parts.users, (Area{4, 4, 316, 66}));
  EXPECT_EQ(parts.bar, (Area{0, 66, 320, 72}));
  EXPECT_EQ(parts.conversation, (Area{4, 72, 316, 290}));
  EXPECT_EQ(parts.typed, (Area{4, 294, 272, 340}));
  EXPECT_EQ(parts.send, (Area{276, 294, 316, 340}));
  EXPECT_EQ(parts.status, (Area{4, 340, 316, 360}));
}

TEST(ChatLayout, WithoutTheStatusLineTheRestMovesDown) {
  const ChatParts parts = ChatLayout(
      {.width = 320, .height = 360, .barTop = 66, .sendWidth = 40, .sendHeight = 46, .status = false}, kNormal);
  EXPECT_EQ(parts.typed.bottom, 356);
  EXPECT_EQ(parts.conversation.bottom, 306);
}

// However small the window and wherever the bar: nothing inside out, and the line to type in sight.
TEST(ChatLayout, NothingTurnsInsideOut) {
  for (const int width : {0, 50, 125, 400})
    for (const int height : {0, 60, 110, 300})
      for (const int barTop : {0, 27, 150, 1000}) {
        const ChatParts parts = ChatLayout(
            {.width = width, .height = height, .barTop = barTop, .sendWidth = 60, .sendHeight = 46}, kNormal);
        for (const Area& area : {parts.users, parts.bar, parts.conversation, parts.typed, parts.send, parts.status}) {
          EXPECT_GE(area.Width(), 0) << width;
          EXPECT_GE(area.Height(), 0) << height << ' ' << barTop;
        }
        const int least = height >= 110 ? parts.bar.bottom : 0;
        EXPECT_GE(parts.typed.top, least) << height << ' ' << barTop;
      }
}

}  // namespace
}  // namespace conversation
