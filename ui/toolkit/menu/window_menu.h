// The menu of a window: created from a table, with captions in the language of the window, and drawn by WndCoolMenu
// except in safe mode.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ui/toolkit/handles.h"
#include "ui/toolkit/menu/cool_menu.h"
#include "ui/toolkit/menu/menu_items.h"

namespace toolkit {

// The window's menu bar, or a pop-up menu.
enum class MenuKind { Bar, PopUp };

struct ItemPosition {
  HMENU menu;
  int position;
};

// The position of an item, including sub-menus and headings; nothing when it is not in the menu.
std::optional<ItemPosition> FindItem(HMENU menu, unsigned id);

class WindowMenu {
 public:
  // The table must outlive the menu.
  WindowMenu(MenuTable table, MenuKind kind) : table_(table), kind_(kind) {}

  // Called with the help text of the highlighted item, empty when it has none or the menu has closed. Set it before
  // DrawItems; safe mode has no help texts.
  std::function<void(const std::string& text)> menuHelp;

  // Creates the menu. The window owns a bar.
  void Create(HWND window, bool fromLanguageFile);

  // Makes WndCoolMenu draw the items, except in safe mode.
  void DrawItems();

  // Sets the captions of all rows, including those that are not in the menu at present. Pictures stay with their rows.
  void SetCaptions(bool fromLanguageFile);

  void Check(unsigned id, bool checked);
  void Enable(unsigned id, bool enabled);

  // Removes the item of a row from the menu, or inserts it at its place among the present rows. Not for sub-menus.
  void SetShown(unsigned id, bool shown);

  // Inserts an item without a row, such as one of a list of users, before the item at `position`. ItemsChanged makes it
  // owner-drawn.
  void Insert(const ItemPosition& place, unsigned id, const std::string& authored);

  // The same for an item with an empty sub-menu.
  HMENU InsertSubMenu(const ItemPosition& place, unsigned id, const std::string& authored);
  void ItemsChanged() { drawing_.Convert(); }

  HMENU handle() const { return menu_; }
  std::optional<ItemPosition> Find(unsigned id) const { return FindItem(menu_, id); }
  WndCoolMenu& Drawing() { return drawing_; }

 private:
  std::size_t AppendRows(HMENU menu, std::size_t row);
  std::optional<std::size_t> RowOf(unsigned id) const;
  std::optional<ItemPosition> PlaceFor(std::size_t row) const;
  void SetCaption(const ItemPosition& place, const std::string& authored) const;

  const MenuTable table_;
  const MenuKind kind_;
  bool plain_ = false;                 // safe mode
  std::vector<std::string> captions_;  // of the rows, as authored
  HWND window_ = nullptr;
  HMENU menu_ = nullptr;
  Menu popUp_;           // owner of menu_ unless it is a bar
  WndCoolMenu drawing_;  // ends before the menu
};

}  // namespace toolkit
