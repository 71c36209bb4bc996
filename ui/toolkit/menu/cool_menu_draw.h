// The look of a window's owner-drawn menus, and measuring and drawing of an item.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <cstdint>
#include <string>

#include "ui/toolkit/handles.h"
#include "ui/toolkit/menu/menu_items.h"

namespace toolkit {

constexpr std::int32_t SystemColour(int index) {
  return static_cast<std::int32_t>(0x80000000u | static_cast<unsigned>(index));
}

// The defaults are those of the system's menus. Colours are in the form of PaintColour, so that system colours follow
// the theme, including high contrast.
struct MenuLook {
  HIMAGELIST ilHandle = nullptr;  // images of the items; not owned
  bool ComplexChecks = true;      // marks drawn as raised and sunken shapes
  bool ColorEmbossed = true;      // images of disabled items drawn embossed
  bool FullSelect = true;         // highlight the whole row, else the text only
  std::int32_t SelectColor = SystemColour(COLOR_HIGHLIGHT);
  std::int32_t ForeColor = SystemColour(COLOR_MENUTEXT);
  std::string FontName;  // empty: the system's menu font
  int FontSize = 0;      // points; 0: the size of the system's menu font
};

// The fonts of a look on this screen.
struct MenuFonts {
  Font MenuFont;
  Font MenuFontSep;  // of section headings
};

MenuFonts MakeMenuFonts(const MenuLook& look);

// The size of an item, pixels. `dc` is any device context of the screen.
SIZE MeasureMenuItem(HDC dc, const MenuLook& look, const MenuFonts& fonts, const CMyItemData& data);

// Draws the item in the state of the request. Whether it is checked, disabled or highlighted is never cached, since it
// changes without notice.
void DrawMenuItem(const DRAWITEMSTRUCT& request, const MenuLook& look, const MenuFonts& fonts, const CMyItemData& data);

}  // namespace toolkit
