#include "ui/toolkit/menu/menu_builder.h"

#include <string>

#include "ui/toolkit/menu/menu_items.h"

namespace toolkit {
namespace {

MENUITEMINFOA ItemInfo(HMENU menu, int position, UINT mask) {
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = mask;
  ::GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info);
  return info;
}

// An item's caption in this style; safe mode turns heads into separators.
void SetCaption(const ItemPlace& place, const std::string& authored, MenuStyle style) {
  std::string shown = style == MenuStyle::Plain ? PlainCaption(authored) : authored;
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_FTYPE;
  if (style == MenuStyle::Plain && IsSeparator(ParseCaption(authored))) {
    info.fType = MFT_SEPARATOR;
  } else {
    info.fMask |= MIIM_STRING;
    info.fType = MFT_STRING;
    info.dwTypeData = shown.data();
  }
  ::SetMenuItemInfoA(place.menu, static_cast<UINT>(place.position), TRUE, &info);
}

void InsertRow(HMENU menu, int position, const MenuRow& row, MenuStyle style) {
  InsertCaption(menu, position, row.id, AuthoredCaption(row), style);
}

// Appends the rows from `row` on that stand on this level or deeper; returns the first row after them.
std::size_t AppendRows(HMENU menu, MenuTable table, std::size_t row, MenuStyle style) {
  const int level = table[row].level;
  while (row < table.size() && table[row].level == level) {
    const int position = ::GetMenuItemCount(menu);
    InsertRow(menu, position, table[row], style);
    if (!OpensSubMenu(table, row)) {
      ++row;
      continue;
    }
    MENUITEMINFOA info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_SUBMENU;
    info.hSubMenu = ::CreatePopupMenu();
    ::SetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info);
    row = AppendRows(info.hSubMenu, table, row + 1, style);
  }
  return row;
}

std::optional<std::size_t> RowOf(MenuTable table, unsigned id) {
  for (std::size_t row = 0; row < table.size(); ++row)
    if (table[row].id == id) return row;
  return std::nullopt;
}

// Behind the nearest row before it that is there; first when none of its level is.
std::optional<ItemPlace> PlaceFor(HMENU menu, MenuTable table, std::size_t row) {
  for (std::size_t before = row; before-- > 0;) {
    if (table[before].level > table[row].level) continue;
    const auto found = FindItem(menu, table[before].id);
    if (table[before].level == table[row].level) {
      if (found) return ItemPlace{found->menu, found->position + 1};
      continue;
    }
    if (!found) return std::nullopt;
    return ItemPlace{::GetSubMenu(found->menu, found->position), 0};
  }
  return ItemPlace{menu, 0};
}

}  // namespace

Menu BuildMenu(MenuTable table, MenuKind kind, MenuStyle style) {
  Menu menu(kind == MenuKind::Bar ? ::CreateMenu() : ::CreatePopupMenu());
  if (!table.empty()) AppendRows(menu.get(), table, 0, style);
  return menu;
}

void SetCaptions(HMENU menu, MenuTable table, MenuStyle style) {
  for (const MenuRow& row : table)
    if (const auto place = FindItem(menu, row.id)) SetCaption(*place, AuthoredCaption(row), style);
}

void SetRowShown(HMENU menu, MenuTable table, MenuStyle style, unsigned id, bool shown) {
  const auto row = RowOf(table, id);
  const auto place = FindItem(menu, id);
  if (!row || place.has_value() == shown) return;
  if (place) {
    ::RemoveMenu(place->menu, static_cast<UINT>(place->position), MF_BYPOSITION);
  } else if (const auto free = PlaceFor(menu, table, *row)) {
    InsertRow(free->menu, free->position, table[*row], style);
  }
}

void InsertCaption(HMENU menu, int position, unsigned id, const std::string& authored, MenuStyle style) {
  ::InsertMenuA(menu, static_cast<UINT>(position), MF_BYPOSITION | MF_STRING, id, "");
  SetCaption({menu, position}, authored, style);
}

std::optional<ItemPlace> FindItem(HMENU menu, unsigned id) {
  const int count = ::GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    const MENUITEMINFOA info = ItemInfo(menu, position, MIIM_ID | MIIM_SUBMENU);
    if (info.wID == id) return ItemPlace{menu, position};
    if (!info.hSubMenu) continue;
    if (const auto found = FindItem(info.hSubMenu, id)) return found;
  }
  return std::nullopt;
}

}  // namespace toolkit
