#include "ui/toolkit/menu/window_menu.h"

#include "core/globals.h"
#include "ui/toolkit/pictures.h"

namespace toolkit {
namespace {

MENUITEMINFOA ItemInfo(HMENU menu, int position, UINT mask) {
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = mask;
  ::GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info);
  return info;
}

}  // namespace

std::optional<ItemPosition> FindItem(HMENU menu, unsigned id) {
  const int count = ::GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    const MENUITEMINFOA info = ItemInfo(menu, position, MIIM_ID | MIIM_SUBMENU);
    if (info.wID == id) return ItemPosition{menu, position};
    if (!info.hSubMenu) continue;
    if (const auto found = FindItem(info.hSubMenu, id)) return found;
  }
  return std::nullopt;
}

void WindowMenu::Create(HWND window, bool fromLanguageFile) {
  window_ = window;
  plain_ = core::gSafe != 0;
  captions_ = AuthoredCaptions(table_, fromLanguageFile);
  popUp_ = Menu(Created(kind_ == MenuKind::Bar ? ::CreateMenu() : ::CreatePopupMenu()));
  menu_ = popUp_.get();
  if (!table_.empty()) AppendRows(menu_, 0);
  if (kind_ == MenuKind::Bar && ::SetMenu(window_, menu_)) popUp_.release();
}

void WindowMenu::DrawItems() {
  if (plain_) return;
  drawing_.Attach(window_);
  drawing_.look.ilHandle = SharedPictures(res::Strip::Menu);
  drawing_.help.MenuHelp = menuHelp;
  TagPictures(table_, captions_, drawing_.imageTags);
  if (kind_ == MenuKind::Bar)
    drawing_.AddMenuBar();
  else
    drawing_.AddMenuHead(menu_);
}

void WindowMenu::SetCaptions(bool fromLanguageFile) {
  captions_ = AuthoredCaptions(table_, fromLanguageFile);
  TagPictures(table_, captions_, drawing_.imageTags);
  drawing_.ChangeCaptions([this] {
    for (std::size_t row = 0; row < table_.size(); ++row)
      if (const auto place = Find(table_[row].id)) SetCaption(*place, captions_[row]);
  });
  if (kind_ == MenuKind::Bar) ::DrawMenuBar(window_);
}

void WindowMenu::Check(unsigned id, bool checked) { ::CheckMenuItem(menu_, id, checked ? MF_CHECKED : MF_UNCHECKED); }

void WindowMenu::Enable(unsigned id, bool enabled) { ::EnableMenuItem(menu_, id, enabled ? MF_ENABLED : MF_GRAYED); }

void WindowMenu::SetShown(unsigned id, bool shown) {
  const auto row = RowOf(id);
  const auto place = Find(id);
  if (!row || place.has_value() == shown) return;
  if (place) {
    ::RemoveMenu(place->menu, static_cast<UINT>(place->position), MF_BYPOSITION);
  } else if (const auto free = PlaceFor(*row)) {
    Insert(*free, id, captions_[*row]);
  }
  ItemsChanged();
}

void WindowMenu::Insert(const ItemPosition& place, unsigned id, const std::string& authored) {
  ::InsertMenuA(place.menu, static_cast<UINT>(place.position), MF_BYPOSITION | MF_STRING, id, "");
  SetCaption(place, authored);
}

HMENU WindowMenu::InsertSubMenu(const ItemPosition& place, unsigned id, const std::string& authored) {
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_SUBMENU;
  info.hSubMenu = Created(::CreatePopupMenu());
  Insert(place, id, authored);
  ::SetMenuItemInfoA(place.menu, static_cast<UINT>(place.position), TRUE, &info);
  return info.hSubMenu;
}

// Appends the rows from `row` on that are on this level or deeper; returns the first row after them.
std::size_t WindowMenu::AppendRows(HMENU menu, std::size_t row) {
  const int level = table_[row].level;
  while (row < table_.size() && table_[row].level == level) {
    const ItemPosition end{menu, ::GetMenuItemCount(menu)};
    const unsigned id = table_[row].id;
    const std::string& caption = captions_[row];
    if (OpensSubMenu(table_, row)) {
      row = AppendRows(InsertSubMenu(end, id, caption), row + 1);
    } else {
      Insert(end, id, caption);
      ++row;
    }
  }
  return row;
}

std::optional<std::size_t> WindowMenu::RowOf(unsigned id) const {
  for (std::size_t row = 0; row < table_.size(); ++row)
    if (table_[row].id == id) return row;
  return std::nullopt;
}

// After the nearest previous row of its level that is in the menu; first when there is none.
std::optional<ItemPosition> WindowMenu::PlaceFor(std::size_t row) const {
  for (std::size_t before = row; before-- > 0;) {
    if (table_[before].level > table_[row].level) continue;
    const auto found = Find(table_[before].id);
    if (table_[before].level == table_[row].level) {
      if (found) return ItemPosition{found->menu, found->position + 1};
      continue;
    }
    if (!found) return std::nullopt;
    return ItemPosition{::GetSubMenu(found->menu, found->position), 0};
  }
  return ItemPosition{menu_, 0};
}

// Safe mode turns headings into separators.
void WindowMenu::SetCaption(const ItemPosition& place, const std::string& authored) const {
  std::string shown = plain_ ? PlainCaption(authored) : authored;
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_FTYPE;
  if (plain_ && IsSeparator(ParseCaption(authored))) {
    info.fType = MFT_SEPARATOR;
  } else {
    info.fMask |= MIIM_STRING;
    info.fType = MFT_STRING;
    info.dwTypeData = shown.data();
  }
  ::SetMenuItemInfoA(place.menu, static_cast<UINT>(place.position), TRUE, &info);
}

}  // namespace toolkit
