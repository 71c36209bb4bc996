#include "ui/conversation/popup_motion.h"

#include <gtest/gtest.h>

#include "ui/conversation/popup_layout.h"

namespace conversation {
namespace {

constexpr Screen kScreen{{15360}, {11520}};  // 1024 x 768 at 96 dpi
constexpr Twips kWidth{2000}, kHeight{1230};

Twips RestingTop(Corner corner, int alertHeight) {
  Twips top = StartOf(corner, kScreen, kWidth, kHeight).top;
  while (const auto next = NextTop(corner, kScreen, top, kHeight, alertHeight)) top = *next;
  return top;
}

TEST(PopupMotion, StartsJustOutsideItsCorner) {
  const auto start = [](Corner corner) {
    const Place place = StartOf(corner, kScreen, kWidth, kHeight);
    return std::pair(place.left.value, place.top.value);
  };
  EXPECT_EQ(start(Corner::TopLeft), std::pair(0, -1230));
  EXPECT_EQ(start(Corner::TopRight), std::pair(13360, -1230));
  EXPECT_EQ(start(Corner::BottomLeft), std::pair(0, 11520));
  EXPECT_EQ(start(Corner::BottomRight), std::pair(13360, 11520));
}

// One tick too few leaves it cut off, one too many lets it jump: both ends of the slide, from both sides.
TEST(PopupMotion, RestsAtTheFirstStepThatReachesTheAlertHeight) {
  EXPECT_EQ(RestingTop(Corner::TopLeft, 0), Twips{20});
  EXPECT_EQ(RestingTop(Corner::TopRight, 2), Twips{920});
  EXPECT_EQ(RestingTop(Corner::BottomLeft, 0), Twips{10270});
  EXPECT_EQ(RestingTop(Corner::BottomRight, 2), Twips{9370});
  EXPECT_FALSE(NextTop(Corner::TopLeft, kScreen, Twips{900}, kHeight, 2)) << "exactly there is there";
  EXPECT_FALSE(NextTop(Corner::BottomLeft, kScreen, Twips{11520 - 1230}, kHeight, 0));
}

TEST(PopupMotion, OtherSettingsLeaveThePopupInPlace) {
  for (const int setting : {0, 5, -1}) EXPECT_FALSE(CornerOf(setting));
  EXPECT_EQ(PlaceWithoutCorner(kScreen, kWidth).left, Twips{1500});
  EXPECT_EQ(PlaceWithoutCorner(kScreen, Twips{15000}).left, Twips{360}) << "the close button stays on the screen";
  EXPECT_EQ(PlaceWithoutCorner(kScreen, Twips{15360}).left, Twips{0});
}

TEST(PopupMotion, FlashesSixTimesWhateverTicksFollow) {
  FlashCount flashes;
  int toggles = 0;
  for (int tick = 0; tick < 10; ++tick) {
    toggles += flashes.Tick();
    EXPECT_EQ(flashes.Done(), tick >= 5) << tick;
  }
  EXPECT_EQ(toggles, 6);
}

constexpr Size kPicture{{240}, {240}};

TEST(PopupLayout, SizeFollowsTextAndPicture) {
  EXPECT_EQ(LabelWidth(Twips{300}), Twips{1900}) << "one word";
  EXPECT_EQ(PopupSize({LabelWidth(Twips{300}), Twips{405}}, kPicture.height).width, Twips{2000});
  EXPECT_EQ(PopupSize({LabelWidth(Twips{4000}), Twips{405}}, kPicture.height).width, Twips{4100});
  EXPECT_EQ(PopupSize({LabelWidth(Twips{4000}), Twips{405}}, kPicture.height).height, Twips{240 + 405 + 300});
}

// Whatever is sent, the close button can be reached.
TEST(PopupLayout, TheLargestPopupFitsTheScreenAtItsAlertHeight) {
  for (const int alertHeight : {0, 2, 10}) {
    const Size largest = LargestLabel(kScreen, kPicture.height, RestOf(Corner::BottomLeft, alertHeight));
    const Size popup = PopupSize(largest, kPicture.height);
    EXPECT_EQ(popup.width, kScreen.width);
    EXPECT_EQ(popup.height + Twips{450 * alertHeight} + kStep, kScreen.height);
  }
  EXPECT_EQ(LargestLabel(kScreen, kPicture.height, Twips{450000}).height, Twips{1200});
  EXPECT_EQ(LargestLabel(kScreen, kPicture.height, Twips{-450000}).height, Twips{11520 - 590});
  const Twips top = PlaceWithoutCorner(kScreen, kScreen.width).top;
  const Size without = LargestLabel(kScreen, kPicture.height, RestOf(std::nullopt, 0));
  EXPECT_LE(top + PopupSize(without, kPicture.height).height, kScreen.height);
}

TEST(PopupLayout, PartsStandInsideAndApart) {
  const Size label{LabelWidth(Twips{300}), Twips{405}}, popup = PopupSize(label, kPicture.height);
  const PopupParts parts = PartsOf(popup, label, kPicture);
  EXPECT_LE(parts.close.left + parts.close.width, popup.width);
  EXPECT_EQ(parts.drop.left + parts.drop.width, parts.close.left);
  EXPECT_LE(parts.sender.left + parts.sender.width, parts.drop.left);
  EXPECT_LE(parts.picture.left + parts.picture.width, parts.sender.left);
  for (const Box& box : {parts.picture, parts.sender, parts.drop, parts.close}) {
    EXPECT_GE(box.top, Twips{0});
    EXPECT_LE(box.top + box.height, parts.label.top);
  }
  EXPECT_LE(parts.label.top + parts.label.height, popup.height);
  EXPECT_LE(parts.label.left + parts.label.width, popup.width);
}

}  // namespace
}  // namespace conversation
