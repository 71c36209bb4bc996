#include "ui/conversation/users_menu.h"

#include <algorithm>

#include "core/text.h"
#include "ui/conversation/chat_menu.h"
#include "ui/toolkit/menu/menu_items.h"
#include "ui/toolkit/screen.h"

namespace conversation {
namespace {

using namespace chatmenu;
using toolkit::operator""_dp;

constexpr std::size_t kShownOfName = 40;
constexpr char kMore[] = "...";

// About the height of an entry; as many entries as fit the screen make a column.
constexpr toolkit::Twips kEntryHeight = 24_dp;

std::size_t EntriesInColumn() {
  return static_cast<std::size_t>(std::max(toolkit::WorkAreaPixels().Height() / toolkit::Px(kEntryHeight) - 6, 8));
}

// A tab would part the name from a shortcut, other control bytes would show as boxes.
std::string Shown(const std::string& name) {
  std::string shown(core::LeadingLetters(name, kShownOfName));
  std::ranges::replace_if(
      shown, [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  if (name.size() > kShownOfName) shown += kMore;
  return toolkit::LiteralCaption(shown);
}

bool IsUserEntry(unsigned id) { return (id >= mnuUser && id < mnuUser + kMostOffered) || id == mnuMore; }

void RemoveEntries(HMENU menu) {
  for (int position = ::GetMenuItemCount(menu); position-- > 0;)
    if (IsUserEntry(::GetMenuItemID(menu, position))) ::RemoveMenu(menu, static_cast<UINT>(position), MF_BYPOSITION);
}

void BreakColumn(HMENU menu, int position) {
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_FTYPE;
  info.fType = MFT_STRING | MFT_MENUBARBREAK;
  ::SetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info);
}

}  // namespace

void FillUsersMenu(toolkit::WindowMenu& menu, const std::vector<std::string>& names) {
  RemoveEntries(menu.Find(mnuRemove)->menu);
  auto place = *menu.Find(mnuRemove);
  const std::size_t offered = std::min(names.size(), kMostOffered), column = EntriesInColumn();
  for (std::size_t i = 0; i < offered; ++i, ++place.position) {
    menu.Insert(place, mnuUser + static_cast<unsigned>(i), Shown(names[i]));
    if (i > 0 && i % column == 0) BreakColumn(place.menu, place.position);
  }
  if (offered < names.size()) {
    menu.Insert(place, mnuMore, kMore);
    menu.Enable(mnuMore, false);
  }
  menu.ItemsChanged();
}

}  // namespace conversation
