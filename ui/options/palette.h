// The colours a name can have: the sixteen of a text screen, 0x00BBGGRR, dark ones first.
#pragma once

#include <array>
#include <cstdint>

#include "ui/toolkit/caption.h"

namespace options {

using toolkit::Caption;

struct Swatch {
  std::int32_t colour;
  Caption name;  // for screen readers
};

inline constexpr std::array<Swatch, 16> kPalette{{
    {0x000000, Caption::Spoken(2101, "Black")},
    {0x800000, Caption::Spoken(2102, "Dark blue")},
    {0x008000, Caption::Spoken(2103, "Dark green")},
    {0x808000, Caption::Spoken(2104, "Dark cyan")},
    {0x000080, Caption::Spoken(2105, "Dark red")},
    {0x800080, Caption::Spoken(2106, "Purple")},
    {0x008080, Caption::Spoken(2107, "Olive")},
    {0xC0C0C0, Caption::Spoken(2108, "Light grey")},
    {0x808080, Caption::Spoken(2109, "Dark grey")},
    {0xFF0000, Caption::Spoken(2110, "Blue")},
    {0x00FF00, Caption::Spoken(2111, "Green")},
    {0xFFFF00, Caption::Spoken(2112, "Cyan")},
    {0x0000FF, Caption::Spoken(2113, "Red")},
    {0xFF00FF, Caption::Spoken(2114, "Magenta")},
    {0x00FFFF, Caption::Spoken(2115, "Yellow")},
    {0xFFFFFF, Caption::Spoken(2116, "White")},
}};

}  // namespace options
