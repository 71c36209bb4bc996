// The layouts of windows.
#include <gtest/gtest.h>

#include "ui/conversation/popup_layout.h"
#include "ui/conversation/window_layout.h"
#include "ui/main/main_layout.h"

namespace conversation {
namespace {

constexpr toolkit::Dpi kNormal{96};

// A work area that differs from the screen at every edge.
TEST(MainLayout, CornersAreThoseOfTheWorkArea) {
  constexpr Area area{60, 10, 1024, 738}, window{300, 300, 467, 607};
  constexpr Area corners[] = {{60, 10, 227, 317}, {857, 10, 1024, 317}, {60, 431, 227, 738}, {857, 431, 1024, 738}};
  for (unsigned corner = 0; corner < 4; ++corner)
    EXPECT_EQ(mainwindow::CornerPlace(corner, area, window), corners[corner]) << corner;
}

constexpr ScreenSize kScreen{{15360}, {11520}};  // 1024 x 768 at 96 dpi
constexpr Twips kWidth{2000}, kHeight{1230};
constexpr Size kPicture{{240}, {240}};

// One tick too few leaves a popup clipped, one too many makes it jump: checks both ends of the slide.
TEST(PopupMotion, SlidesInToTheAlertHeight) {
  const struct {
    Corner corner;
    int left, top, alertHeight, rest;
  } kCourses[] = {{Corner::TopLeft, 0, -1230, 0, 20},
                  {Corner::TopRight, 13360, -1230, 2, 920},
                  {Corner::BottomLeft, 0, 11520, 0, 10270},
                  {Corner::BottomRight, 13360, 11520, 2, 9370}};
  for (const auto& [corner, left, startTop, alertHeight, rest] : kCourses) {
    const Point start = StartOf(corner, kScreen, kWidth, kHeight);
    EXPECT_EQ(start.left.value, left);
    EXPECT_EQ(start.top.value, startTop);
    Twips top = start.top;
    while (const auto next = NextTop(corner, kScreen, top, kHeight, alertHeight)) top = *next;
    EXPECT_EQ(top.value, rest);
  }
  EXPECT_FALSE(NextTop(Corner::TopLeft, kScreen, Twips{900}, kHeight, 2)) << "an exact hit is the end";
  EXPECT_FALSE(NextTop(Corner::BottomLeft, kScreen, Twips{11520 - 1230}, kHeight, 0));
}

TEST(PopupMotion, OtherSettingsLeaveThePopupInPlace) {
  for (const int setting : {0, 5, -1}) EXPECT_FALSE(CornerOf(setting));
  for (const int setting : {1, 4}) EXPECT_EQ(CornerOf(setting), Corner{setting});
  EXPECT_EQ(PositionWithoutCorner(kScreen, Twips{15000}).left, Twips{360}) << "the close button stays on the screen";
}

// Whatever is sent, the close button is on the screen.
TEST(PopupLayout, TheLargestPopupFitsTheScreenAtItsAlertHeight) {
  for (const int alertHeight : {0, 2, 10}) {
    const Size largest = LargestLabel(kScreen, kPicture.height, RestOf(Corner::BottomLeft, alertHeight));
    const Size popup = PopupSize(largest, kPicture.height);
    EXPECT_EQ(popup.width, kScreen.width);
    EXPECT_EQ(popup.height + Twips{450 * alertHeight} + kStep, kScreen.height);
  }
  EXPECT_EQ(LargestLabel(kScreen, kPicture.height, Twips{450000}).height, Twips{1200});
}

// At a usual size no part of a window is empty, overlaps another one or is clipped.
TEST(Layout, PartsAreInsideAndDoNotOverlap) {
  const auto check = [](const Area& whole, const std::vector<Area>& parts) {
    for (std::size_t i = 0; i < parts.size(); ++i) {
      SCOPED_TRACE(testing::Message() << "part " << i << " of a window of " << whole.right << " x " << whole.bottom);
      const Area& part = parts[i];
      EXPECT_TRUE(part.Width() > 0 && part.Height() > 0);
      EXPECT_TRUE(part.left >= 0 && part.top >= 0 && part.right <= whole.right && part.bottom <= whole.bottom);
      for (std::size_t j = 0; j < i; ++j)
        EXPECT_TRUE(part.left >= parts[j].right || part.right <= parts[j].left || part.top >= parts[j].bottom ||
                    part.bottom <= parts[j].top)
            << "overlaps part " << j;
    }
  };
  const ChatParts chat =
      ChatLayout({.width = 320, .height = 400, .barTop = 80, .sendWidth = 60, .sendHeight = 46}, kNormal);
  check({0, 0, 320, 400}, {chat.users, chat.bar, chat.conversation, chat.typed, chat.send, chat.status});
  const ComposerParts composer = ComposerLayout(460, 320, 50, 15, kNormal);
  check({0, 0, 460, 320},
        {{0, 0, 460, 50}, composer.toLabel, composer.messageLabel, composer.recipients, composer.text});
  EXPECT_GT(composer.text.Width(), composer.recipients.Width());
  for (const bool status : {true, false}) {
    const mainwindow::MainBands main = mainwindow::BandsOf(300, 50, 20, status);
    EXPECT_EQ(std::pair(main.rosterTop, main.rosterTop + main.rosterHeight), std::pair(50, status ? 280 : 300));
    EXPECT_EQ(main.statusTop, status ? 280 : 300);
  }
  const Twips list{2400}, name = mainwindow::NameColumnWidth(list);
  EXPECT_GE(name, Twips{1000});
  EXPECT_LE(name + mainwindow::StatColumnWidth(list, name), list - Twips{200}) << "beside the scroll bar";
  for (const int text : {300, 4000}) {
    const Size label{LabelWidth(Twips{text}), Twips{405}}, popup = PopupSize(label, kPicture.height);
    const PopupParts parts = PartsOf(popup, label, kPicture);
    std::vector<Area> areas;
    for (const Bounds& part : {parts.picture, parts.sender, parts.drop, parts.close, parts.label})
      areas.push_back(
          {part.left.value, part.top.value, (part.left + part.width).value, (part.top + part.height).value});
    check({0, 0, popup.width.value, popup.height.value}, areas);
    EXPECT_GE(label.width, Twips{text});
  }
}

}  // namespace
}  // namespace conversation
