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

Area InTwips(const Bounds& part) {
  return toolkit::AreaAt(part.left.value, part.top.value, part.width.value, part.height.value);
}

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
  EXPECT_EQ(CornerOf(1), Corner::TopLeft);
  EXPECT_EQ(CornerOf(4), Corner::BottomRight);
  EXPECT_EQ(PositionWithoutCorner(kScreen, kWidth).left, Twips{1500});
  EXPECT_EQ(PositionWithoutCorner(kScreen, Twips{15000}).left, Twips{360}) << "the close button stays on the screen";
  EXPECT_EQ(PositionWithoutCorner(kScreen, Twips{16000}).left, Twips{0});
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

// The narrowest popup, as for an alert of one word.
TEST(PopupLayout, PartsAreCentredInTheirLineAndAlignedWithTheText) {
  const Size label{LabelWidth(Twips{300}), Twips{405}}, popup = PopupSize(label, kPicture.height);
  EXPECT_EQ(InTwips(Bounds{{}, {}, popup.width, popup.height}), (Area{0, 0, 2000, 945}));
  const PopupParts parts = PartsOf(popup, label, kPicture);
  EXPECT_EQ(InTwips(parts.picture), (Area{155, 125, 395, 365}));
  EXPECT_EQ(InTwips(parts.sender), (Area{495, 125, 1330, 365}));
  EXPECT_EQ(InTwips(parts.drop), (Area{1380, 102, 1665, 387}));
  EXPECT_EQ(InTwips(parts.close), (Area{1665, 102, 1950, 387}));
  EXPECT_EQ(InTwips(parts.label), (Area{50, 490, 1950, 895}));
  EXPECT_EQ(LabelWidth(Twips{4000}), Twips{4000}) << "a long line is not clipped";
  EXPECT_EQ(PartsOf(popup, label, {{1200}, {240}}).sender.width, Twips{0}) << "beside a wide picture";
}

// Everything is twice as large at 200 %, to the pixel.
TEST(WindowLayout, ScalesWithTheResolution) {
  for (const int scale : {1, 2}) {
    SCOPED_TRACE(scale);
    const toolkit::Dpi dpi{96 * scale};
    const auto at = [scale](int left, int top, int right, int bottom) {
      return Area{scale * left, scale * top, scale * right, scale * bottom};
    };
    const ComposerParts composer = ComposerLayout(460 * scale, 320 * scale, 50 * scale, 15 * scale, dpi);
    EXPECT_EQ(composer.toLabel, at(8, 54, 146, 69));
    EXPECT_EQ(composer.messageLabel, at(154, 54, 452, 69));
    EXPECT_EQ(composer.recipients, at(8, 72, 146, 312));
    EXPECT_EQ(composer.text, at(154, 72, 452, 312));
    ChatSizes sizes{320 * scale, 400 * scale, 80 * scale, 60 * scale, 46 * scale, true};
    const ChatParts chat = ChatLayout(sizes, dpi);
    EXPECT_EQ(chat.users, at(4, 4, 316, 80));
    EXPECT_EQ(chat.bar, at(0, 80, 320, 86));
    EXPECT_EQ(chat.conversation, at(4, 86, 316, 330));
    EXPECT_EQ(chat.typed, at(4, 334, 252, 380));
    EXPECT_EQ(chat.send, at(256, 334, 316, 380));
    EXPECT_EQ(chat.status, at(4, 380, 316, 400));
    sizes.status = false;
    EXPECT_EQ(ChatLayout(sizes, dpi).send, at(256, 350, 316, 396));
  }
}

// A user may drag a window's edge, or the splitter bar, to any place.
TEST(WindowLayout, NoPartHasANegativeSize) {
  for (int size = 0; size < 300; size += 7) {
    const ComposerParts composer = ComposerLayout(size, size, 50, 15, kNormal);
    for (const Area& part : {composer.messageLabel, composer.recipients, composer.text})
      EXPECT_TRUE(part.Width() >= 0 && part.Height() >= 0) << size;
    for (const int barTop : {-50, 10, 2000}) {
      const ChatParts chat = ChatLayout({size, size, barTop, 60, 46, barTop > 0}, kNormal);
      for (const Area& part : {chat.users, chat.bar, chat.conversation, chat.typed, chat.send, chat.status})
        EXPECT_TRUE(part.Width() >= 0 && part.Height() >= 0) << size << ", bar at " << barTop;
    }
  }
  EXPECT_EQ(BarTopWithin(Twips{0}, Twips{3800}), Twips{400}) << "the participants stay visible";
  EXPECT_EQ(BarTopWithin(Twips{3000}, Twips{3800}), Twips{2100}) << "the input line stays visible";
  EXPECT_EQ(BarTopWithin(Twips{3000}, Twips{1800}), Twips{400});
}

TEST(MainLayout, ColumnsAndBandsFillTheWindow) {
  for (const auto& [list, name] : {std::pair{2400, 1185}, {6000, 2875}}) {
    EXPECT_EQ(mainwindow::NameColumnWidth(Twips{list}), Twips{name});
    EXPECT_EQ(mainwindow::StatColumnWidth(Twips{list}, Twips{name}), Twips{list - name - 250});
  }
  for (const bool status : {true, false}) {
    const mainwindow::MainBands bands = mainwindow::BandsOf(300, 50, 20, status);
    EXPECT_EQ(std::pair(bands.rosterTop, bands.rosterHeight), std::pair(50, status ? 230 : 250));
    EXPECT_EQ(bands.statusTop, status ? 280 : 300);
  }
  EXPECT_EQ(mainwindow::BandsOf(40, 50, 20, true).rosterHeight, 0);
}

}  // namespace
}  // namespace conversation
