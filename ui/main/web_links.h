// Where the maker can be reached. The order is that of the links in the main window's help menu.
#pragma once

#include <array>

namespace mainwindow {

inline constexpr std::array<const char*, 6> kWebLinks{
    "https://www.vextant.example/quillon/",          "https://www.vextant.example/quillon/help/",
    "https://www.vextant.example/quillon/update/",   "https://www.vextant.example/quillon/bugs/",
    "https://www.vextant.example/quillon/feedback/", "mailto:support@vextant.example",
};

}  // namespace mainwindow
