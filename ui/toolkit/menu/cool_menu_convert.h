// Conversion of the items of a menu tree to owner-drawn ones, and back.
#pragma once

#include <windows.h>

#include <vector>

#include "ui/toolkit/menu/menu_items.h"

namespace toolkit {

// The images for a conversion; none without an image list.
struct ConvertImages {
  const ImageTags* tags = nullptr;
  int count = 0;
};

// Converts every item of the menu and its sub-menus that is not owner-drawn yet: adds its data to the collection and
// stores the key in the item. Skips menus that cannot be read. `mainMenu`: the menu is the bar; its drop-downs are
// skipped.
void ConvertMenu(HMENU menu, CMyItemDatas& datas, const ConvertImages& images, bool mainMenu);

// Restores the authored captions of all converted items of the tree and removes their data.
void RestoreMenu(HMENU menu, CMyItemDatas& datas);

// Sets the converted items again, so that the system queries their sizes again.
void RemeasureMenu(HMENU menu, const CMyItemDatas& datas);

// Appends the keys of all converted items of the tree to the list.
void CollectKeys(HMENU menu, const CMyItemDatas& datas, std::vector<CMyItemDatas::Key>& keys);

}  // namespace toolkit
