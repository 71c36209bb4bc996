// Turning the items of a menu tree into owner-drawn ones, and back.
#pragma once

#include <windows.h>

#include <vector>

#include "ui/toolkit/menu/menu_items.h"

namespace toolkit {

// Where a conversion finds images: none without an image list.
struct ConvertImages {
  const ImageTags* tags = nullptr;
  int count = 0;
};

// Converts every item of the menu and of its sub-menus that is not owner-drawn yet: its data goes into the collection,
// and the item refers to it. A menu that cannot be read stays as it is. `mainMenu`: the menu is the bar itself, whose
// drop-downs are left alone.
void ConvertMenu(HMENU menu, CMyItemDatas& datas, const ConvertImages& images, bool mainMenu);

// Gives every item of the tree that the collection knows its authored caption back and forgets its data.
void RestoreMenu(HMENU menu, CMyItemDatas& datas);

// Writes the converted items anew, so that the system asks for their sizes again.
void RemeasureMenu(HMENU menu, const CMyItemDatas& datas);

// Puts the keys of all converted items of the tree into the list.
void CollectKeys(HMENU menu, const CMyItemDatas& datas, std::vector<CMyItemDatas::Key>& keys);

}  // namespace toolkit
