// The menu of one window: made from its table, captioned in the language of the window, and drawn by WndCoolMenu unless
// the program runs in safe mode.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "ui/toolkit/handles.h"
#include "ui/toolkit/menu/cool_menu.h"
#include "ui/toolkit/menu/menu_table.h"

namespace toolkit {

// The window's menu bar, or a menu that opens in it.
enum class MenuKind { Bar, PopUp };

struct ItemPlace {
  HMENU menu;
  int position;
};

// Where an item stands, sub-menus and heads included; none when it is not in the menu.
std::optional<ItemPlace> FindItem(HMENU menu, unsigned id);

class WindowMenu {
 public:
  // The table has to outlive the menu.
  WindowMenu(MenuTable table, MenuKind kind) : table_(table), kind_(kind) {}

  // Takes the help text of the highlighted item, the empty text when it has none or the menu has closed. Set before
  // DrawItems; in safe mode there are no help texts.
  std::function<void(const std::string& text)> menuHelp;

  // Makes the menu. A bar becomes the window's and is destroyed with it.
  void Create(HWND window, bool fromLanguageFile);

  // Has WndCoolMenu draw the items from now on; in safe mode the system goes on drawing them.
  void DrawItems();

  // New captions for all rows. Rows that are not in the menu at present return with theirs, and pictures stay with
  // their rows.
  void SetCaptions(bool fromLanguageFile);

  void Check(unsigned id, bool checked);
  void Enable(unsigned id, bool enabled);

  // Takes a row's item out of the menu, or puts it back in its place among the rows that are there. Not for rows with a
  // sub-menu.
  void SetShown(unsigned id, bool shown);

  // Inserts an item that no row stands for, one of a list of users for instance, before the item at `position`. It is
  // drawn like the others after ItemsChanged.
  void Insert(const ItemPlace& place, unsigned id, const std::string& authored);

  // The same for one that opens a sub-menu, empty as yet.
  HMENU InsertSubMenu(const ItemPlace& place, unsigned id, const std::string& authored);
  void ItemsChanged() { drawing_.Convert(); }

  HMENU handle() const { return menu_; }
  std::optional<ItemPlace> Find(unsigned id) const { return FindItem(menu_, id); }
  WndCoolMenu& Drawing() { return drawing_; }

 private:
  std::size_t AppendRows(HMENU menu, std::size_t row);
  std::optional<std::size_t> RowOf(unsigned id) const;
  std::optional<ItemPlace> PlaceFor(std::size_t row) const;
  void SetCaption(const ItemPlace& place, const std::string& authored) const;

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
