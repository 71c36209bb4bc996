// The items of menus: the caption markup, which specifies more than a caption; the data of owner-drawn items; the
// letter keys in an open menu; and the tables that menus are created from.
//
//   |Close this window|&Close     help text for the status line, then the caption
//   -Export                       section heading
//   #|Add the time|&Add Time      check mark item; "*" instead of "#" makes it an option (round) mark
//   &Reply                        ordinary item
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "ui/toolkit/caption.h"

namespace toolkit {

// The data of a converted menu item.
struct CMyItemData {
  bool bTrueSub = false;      // opens a sub-menu
  std::string sMenuHelp;      // help text, empty when none
  bool bAsMark = false;       // check or option mark item
  bool bAsCheck = false;      // the mark is a check box, else round
  bool bMainMenu = false;     // is on the menu bar
  std::int16_t iButton = -1;  // index of its image, -1 when none
  std::int32_t fType = 0;     // menu type flags, with kSeparatorType for headings
  std::string sMenuText;      // the caption to draw, with its "&"

  friend bool operator==(const CMyItemData&, const CMyItemData&) = default;
};

// The menu type flag of separators, and of section headings.
inline constexpr std::int32_t kSeparatorType = 0x800;

inline bool IsSeparator(const CMyItemData& data) { return (data.fType & kSeparatorType) != 0; }
inline bool IsHeading(const CMyItemData& data) { return IsSeparator(data) && !data.sMenuText.empty(); }

// Never fails: any other text is an ordinary caption. Sets the texts, the marks and the separator flag.
CMyItemData ParseCaption(std::string_view authored);

// An authored text that parses to the same data: the inverse of ParseCaption.
std::string RestoreCaption(const CMyItemData& data);

// The caption without marks, help text and "&": the name of a control with the same function.
std::string NameOf(std::string_view authored);

// The authored form of a literal text: a user may be called "-anna" or "R&D".
std::string LiteralCaption(std::string_view text);

// Maps captions to images: an image belongs to every caption that begins with one of its tags.
class ImageTags {
 public:
  // An image may have several tags. Empty tags are ignored.
  void Add(int image, std::string tag);

  void Clear() { tags_.clear(); }

  // The lowest index of an image with a tag that the caption begins with, ignoring case; -1 when there is none. Only
  // images below `count` exist.
  std::int16_t Find(std::string_view caption, int count) const;

 private:
  std::map<int, std::vector<std::string>> tags_;
};

// The data of all converted items of a window's menus. The item data of a converted item is the key of its entry rather
// than an address, so that stale values and data of others' owner-drawn items are not found.
class CMyItemDatas {
 public:
  using Key = std::uintptr_t;

  // Returns the key, which is never 0 and unique in the whole run, across collections.
  Key Add(CMyItemData data);

  // Null for an unknown key.
  const CMyItemData* Item(Key key) const;

  std::size_t Count() const { return items_.size(); }

  // Unknown keys are ignored.
  void Remove(Key key) { items_.erase(key); }

  template <class Predicate>
  void RemoveIf(Predicate predicate) {
    std::erase_if(items_, [&](const auto& entry) { return predicate(entry.first); });
  }

  // Key and data, in the order of adding.
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

 private:
  std::map<Key, CMyItemData> items_;
};

// Windows handles the mnemonics of ordinary items only, so a window must handle those of owner-drawn items in the same
// way.

// The letter after the first single "&" of a caption, in lower case; 0 when there is none.
char MnemonicLetter(std::string_view caption);

struct MnemonicItem {
  std::string_view caption;
  bool selectable = true;  // headings and separators are not
  bool enabled = true;
  bool highlighted = false;
};

struct MnemonicChoice {
  int position = -1;     // -1: no item matches
  bool execute = false;  // else the item is only highlighted

  friend bool operator==(const MnemonicChoice&, const MnemonicChoice&) = default;
};

// The mnemonic of exactly one enabled item executes it; of several, the next one after the highlighted item is
// highlighted. A key that is not a mnemonic matches the first letters of captions without mnemonics.
MnemonicChoice ChooseByMnemonic(std::span<const MnemonicItem> items, char key);

inline constexpr int kNoPicture = -1;

// The menus of a window are a table: one row per item, in menu order, with built-in caption, code of its translations,
// command and picture.
//
// Every row has a unique id, even sub-menus and headings: items are hidden, shown and inserted at run time, so they
// must not be looked up by position.
struct MenuRow {
  int level;  // 0 = the menu itself (a bar or a pop-up); rows of a deeper level are in the sub-menu of the row above
  unsigned id;
  Caption caption;  // in the caption markup
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
constexpr bool IsWellFormed(MenuTable table) {
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
