// Menus made from their tables.
#pragma once

#include <windows.h>

#include <optional>

#include "ui/toolkit/handles.h"
#include "ui/toolkit/menu/menu_table.h"

namespace toolkit {

enum class MenuKind { Bar, PopUp };

// The whole menu with its current captions.
Menu BuildMenu(MenuTable table, MenuKind kind, MenuStyle style);

// Gives every item of the table that is in the menu its current caption. Owner-drawn menus must be in their authored
// form meanwhile (WndCoolMenu::ChangeCaptions).
void SetCaptions(HMENU menu, MenuTable table, MenuStyle style);

// Takes a row's item out of the menu, or puts it back in its place among the rows that are there. Nothing happens when
// it is already so. Not for rows with a sub-menu.
void SetRowShown(HMENU menu, MenuTable table, MenuStyle style, unsigned id, bool shown);

// Inserts an item that no table knows, one of a list of users for instance, before the item at `position`.
void InsertCaption(HMENU menu, int position, unsigned id, const std::string& authored, MenuStyle style);

struct ItemPlace {
  HMENU menu;
  int position;
};

// Where an item stands, sub-menus and heads included; none when it is not in the menu.
std::optional<ItemPlace> FindItem(HMENU menu, unsigned id);

}  // namespace toolkit
