// Which events a notification icon raises for a mouse message. The shell posts the message number in the place of
// a coordinate; everything about the order of events is in this one table.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace toolkit {

enum class TrayEvent : std::uint8_t { MouseDown, MouseUp, MouseDblClk, ShowParent, ShowPopUpMenu };
enum class MouseButton : std::uint8_t { Left = 1, Right = 2, Middle = 4 };

struct TrayRoute {
  MouseButton button;
  std::array<TrayEvent, 2> events;  // in the order in which they are raised
  std::size_t count;
};

// Row n serves message 0x201 + n: down, up and double click of the left, right and middle button.
inline constexpr std::array<TrayRoute, 9> kTrayRoutes{{
    {MouseButton::Left, {TrayEvent::MouseDown}, 1},
    {MouseButton::Left, {TrayEvent::MouseUp}, 1},
    {MouseButton::Left, {TrayEvent::MouseDblClk, TrayEvent::ShowParent}, 2},
    {MouseButton::Right, {TrayEvent::MouseDown}, 1},
    {MouseButton::Right, {TrayEvent::MouseUp, TrayEvent::ShowPopUpMenu}, 2},
    {MouseButton::Right, {TrayEvent::MouseDblClk}, 1},
    {MouseButton::Middle, {TrayEvent::MouseDown}, 1},
    {MouseButton::Middle, {TrayEvent::MouseUp}, 1},
    {MouseButton::Middle, {TrayEvent::MouseDblClk}, 1},
}};

constexpr std::uint32_t kFirstTrayMessage = 0x201;

// Null for a plain move or an unknown number.
constexpr const TrayRoute* RouteOf(std::uint32_t message) {
  const std::uint32_t row = message - kFirstTrayMessage;  // wraps for smaller numbers, out of the table's range
  return row < kTrayRoutes.size() ? &kTrayRoutes[row] : nullptr;
}

}  // namespace toolkit
