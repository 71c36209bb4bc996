// Measuring and drawing one owner-drawn menu item.
#pragma once

#include <windows.h>

#include "ui/toolkit/menu/menu_items.h"
#include "ui/toolkit/menu/menu_look.h"

namespace toolkit {

// Size to answer a measure request with, pixels. `dc` is any device context of the screen.
SIZE MeasureMenuItem(HDC dc, const MenuLook& look, const MenuFonts& fonts, const CMyItemData& data);

// Draws the item in the state that the request tells: whether it is checked, disabled or highlighted is asked of the
// request and never remembered, since it changes behind the data.
void DrawMenuItem(const DRAWITEMSTRUCT& request, const MenuLook& look, const MenuFonts& fonts, const CMyItemData& data);

}  // namespace toolkit
