// The menus of a window as a table: one row per item, in menu order, with built-in caption, code of its translations,
// command and picture.
//
// Every row has a unique id, even sub-menus and headings: items are hidden, shown and inserted at run time, so they
// must not be looked up by position.
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
  int level;  // 0 = the menu itself (a bar or a pop-up); rows of a deeper level are in the sub-menu of the row above
  unsigned id;
  Caption caption;  // in the caption language
  int picture = kNoPicture;
  int helpCode = 0;  // of the help text, when name and help text have codes of their own; the caption's code is
                     // then that of the name, and the mark is that of the built-in caption
};

using MenuTable = std::span<const MenuRow>;

// A row followed by deeper rows is a sub-menu.
constexpr bool OpensSubMenu(MenuTable table, std::size_t row) {
  return row + 1 < table.size() && table[row + 1].level > table[row].level;
}

// Whether levels start at 0 and deepen by one at a time, and ids are unique and not 0.
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

// The authored captions of all rows. A row whose text is missing in the language file has an empty caption, but keeps
// its kind of item.
std::vector<std::string> AuthoredCaptions(MenuTable table, bool fromLanguageFile);

// The caption in safe mode, without marks and help text; empty for separators, which headings are in safe mode too.
std::string PlainCaption(std::string_view authored);

// Replaces all tags by the captions of the table's rows with images.
void TagPictures(MenuTable table, std::span<const std::string> captions, ImageTags& tags);

}  // namespace toolkit
