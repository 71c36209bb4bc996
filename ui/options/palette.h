// The colours a name can have: the sixteen of a text screen, 0x00BBGGRR, dark ones first.
#pragma once

#include <array>
#include <cstdint>

#include "ui/toolkit/caption.h"

namespace options {

struct Swatch {
  std::int32_t colour;
  toolkit::Caption name;  // for screen readers
};

inline constexpr std::array<Swatch, 16> kPalette{{
    {0x000000, {2101, "Black"}},
    {0x800000, {2102, "Dark blue"}},
    {0x008000, {2103, "Dark green"}},
    {0x808000, {2104, "Dark cyan"}},
    {0x000080, {2105, "Dark red"}},
    {0x800080, {2106, "Purple"}},
    {0x008080, {2107, "Olive"}},
    {0xC0C0C0, {2108, "Light grey"}},
    {0x808080, {2109, "Dark grey"}},
    {0xFF0000, {2110, "Blue"}},
    {0x00FF00, {2111, "Green"}},
    {0xFFFF00, {2112, "Cyan"}},
    {0x0000FF, {2113, "Red"}},
    {0xFF00FF, {2114, "Magenta"}},
    {0x00FFFF, {2115, "Yellow"}},
    {0xFFFFFF, {2116, "White"}},
}};

}  // namespace options
