// The menus of a chat window.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "res/pictures.h"
#include "ui/toolkit/menu/window_menu.h"

namespace conversation {

// In their own namespace: the menu of an alert popup has commands with the same names.
namespace chatmenu {

// Every item has an id, including headings. mnuUser is the first id of the users online, listed above mnuRemove.
enum Id : unsigned {
  tbSend = 101,
  mnuView = 200,
  mnuExportSep,
  mnuExportT,
  mnuExportC,
  mnuOptionsSep,
  mnuOnTop,
  mnuCLS,
  mnuViewStat,
  mnuTime,
  mnuExitSep,
  mnuClose,
  mnuUsers,
  mnuUsersSep,
  mnuAdd,
  mnuOnlineSep,
  mnuRemove,
  mnuGroup,  // of the sub-menus of names, when there are too many for one menu
  mnuUser = 1000,
};

}  // namespace chatmenu

inline constexpr toolkit::MenuRow kChatMenu[] = {
    {0, chatmenu::mnuView, {3101, "&View"}},
    {1, chatmenu::mnuExportSep, {3102, "-Export"}},
    {1, chatmenu::mnuExportT, {3103, "|Save chat dialog to text file|Export to Text File"}, res::kMenuExportText},
    {1, chatmenu::mnuExportC, {3104, "|Copy chat dialog to clipboard|Export To Clipboard"}, res::kMenuExportClipboard},
    {1, chatmenu::mnuOptionsSep, {3105, "-View Options"}},
    {1, chatmenu::mnuOnTop, {3106, "#|Make this window stay visible|Keep On Top"}},
    {1, chatmenu::mnuCLS, {3107, "|Clear the chat dialog|&Clear"}, res::kMenuClear},
    {1, chatmenu::mnuViewStat, {3108, "#|Show/hide this bar|&Status Bar"}},
    {1, chatmenu::mnuTime, {3109, "#|Add the time to each msg|&Add Time"}},
    {1, chatmenu::mnuExitSep, {3110, "-Exit"}},
    {1, chatmenu::mnuClose, {3111, "|Close this window|&Close"}, res::kMenuClose},
    {0, chatmenu::mnuUsers, {3112, "&Users"}},
    {1, chatmenu::mnuUsersSep, {3113, "-User List Options"}},
    {1, chatmenu::mnuAdd, {3114, "|Add user to 'recieve' list|&Add User"}, res::kMenuAddUser},
    {1, chatmenu::mnuOnlineSep, {3115, "-Users Online"}},
    {1, chatmenu::mnuRemove, {3116, "|Remove selected user from list|&Remove User"}, res::kMenuRemoveUser},
};
static_assert(toolkit::IsWellFormed(kChatMenu));

// mnuUser: menu entries for the users online.
class UsersMenu {
 public:
  explicit UsersMenu(toolkit::WindowMenu& menu) : menu_(menu) {}

  // Replaces the entries above mnuRemove by those for the names, which must outlive them: as entries, or as sub-menus
  // when there are many.
  void Fill(const std::vector<std::string>& names);

  // To be called when a menu opens: if it is one of those sub-menus, creates its entries and removes those of the
  // others.
  void Opens(HMENU menu);

  // The full name of the entry with this index, whatever its caption; null when there is none.
  const std::string* NameOf(unsigned index) const;

 private:
  void Empty();
  void AddEntries(const toolkit::ItemPosition& place, std::size_t begin, std::size_t end);

  toolkit::WindowMenu& menu_;
  const std::vector<std::string>* names_ = nullptr;
  std::vector<std::size_t> groups_;  // where each begins
  std::vector<HMENU> subMenus_;
  std::size_t begin_ = 0, end_ = 0;  // of the names that there are entries for
};

}  // namespace conversation
