#include "ui/toolkit/tray_routing.h"

#include <gtest/gtest.h>

#include <vector>

namespace toolkit {
namespace {

std::vector<TrayEvent> EventsOf(std::uint32_t message) {
  const TrayRoute* route = RouteOf(message);
  if (!route) return {};
  return {route->events.begin(), route->events.begin() + static_cast<std::ptrdiff_t>(route->count)};
}

// The message numbers are spelled out: the table must agree with Windows, not with itself.
TEST(TrayRouting, EveryButtonRaisesItsEventsInOrder) {
  using enum TrayEvent;
  using Events = std::vector<TrayEvent>;
  const Events doubles[] = {{MouseDblClk, ShowParent}, {MouseDblClk}, {MouseDblClk}};
  const Events ups[] = {{MouseUp}, {MouseUp, ShowPopUpMenu}, {MouseUp}};
  const MouseButton buttons[] = {MouseButton::Left, MouseButton::Right, MouseButton::Middle};
  const std::uint32_t downs[] = {0x201, 0x204, 0x207};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(EventsOf(downs[i]), Events{MouseDown});
    EXPECT_EQ(EventsOf(downs[i] + 1), ups[i]);
    EXPECT_EQ(EventsOf(downs[i] + 2), doubles[i]);
    for (std::uint32_t k = 0; k < 3; ++k) EXPECT_EQ(RouteOf(downs[i] + k)->button, buttons[i]);
  }
  EXPECT_EQ(static_cast<int>(MouseButton::Middle), 4);
}

TEST(TrayRouting, OtherMessagesRaiseNothing) {
  for (const std::uint32_t message : {0x0u, 0x1u, 0x200u, 0x20Au, 0xFFFFu, 0xFFFFFFFFu}) EXPECT_FALSE(RouteOf(message));
}

}  // namespace
}  // namespace toolkit
