// The colours a name can have: the sixteen of a text screen, 0x00BBGGRR, dark ones first.
#pragma once

#include <array>
#include <cstdint>

namespace options {

inline constexpr std::array<std::int32_t, 16> kPalette = {
    0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,  // black ... white
    0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF,  // grey ... bright white
};

}  // namespace options
