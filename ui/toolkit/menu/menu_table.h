// The menus of a window as a table: one row per item, in the order in which they stand. The built-in caption, the code
// of its translations, the command and the picture stand side by side, so a new command is one new row.
//
// Every row bears an id of its own, sub-menus and heads too: items come and go while a window lives (hidden commands,
// lists of users), so nothing may be found by its position.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ui/toolkit/caption.h"
#include "ui/toolkit/menu/menu_items.h"

namespace toolkit {

inline constexpr int kNoPicture = -1;

struct MenuRow {
  int level;  // 0 = the menu itself (a bar or a pop-up); rows of a deeper level fill the row above them
  unsigned id;
  Caption caption;  // in the caption language
  int picture = kNoPicture;
  int helpCode = 0;  // where name and help text are texts of their own: the code of the help text, that of the caption
                     // being the code of the name; the mark is the one of the built-in caption
};

using MenuTable = std::span<const MenuRow>;

// A row is a sub-menu when deeper rows follow it.
constexpr bool OpensSubMenu(MenuTable table, std::size_t row) {
  return row + 1 < table.size() && table[row + 1].level > table[row].level;
}

// What a table promises: levels start at 0 and deepen by one at a time, no id is 0 or given twice.
constexpr bool IsSound(MenuTable table) {
  int deepest = 0;
  for (std::size_t row = 0; row < table.size(); ++row) {
    if (table[row].id == 0 || table[row].level < 0 || table[row].level > deepest) return false;
    for (std::size_t other = 0; other < row; ++other)
      if (table[other].id == table[row].id) return false;
    deepest = table[row].level + 1;
  }
  return true;
}

// The captions of all rows, as authored. A row whose text the language file lacks is empty, but stays the kind of item
// that it is.
std::vector<std::string> AuthoredCaptions(MenuTable table, bool fromLanguageFile);

// What safe mode shows of an authored caption; empty for a separator. Safe mode has no marks and no help texts, and its
// heads are plain separators.
std::string PlainCaption(std::string_view authored);

// Tags every image of the table with the captions of its rows, in place of all former tags.
void TagPictures(MenuTable table, std::span<const std::string> captions, ImageTags& tags);

}  // namespace toolkit
