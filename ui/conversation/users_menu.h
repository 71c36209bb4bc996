// mnuUser: the users online as an array of menu entries.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ui/toolkit/menu/window_menu.h"

namespace conversation {

class UsersMenu {
 public:
  explicit UsersMenu(toolkit::WindowMenu& menu) : menu_(menu) {}

  // Puts the names, which have to outlive the entries, in place of those that stood before mnuRemove: as entries, or as
  // sub-menus of them where they are many.
  void Fill(const std::vector<std::string>& names);

  // A menu opens. If it is one of those sub-menus it gets its entries now, and no other sub-menu has any.
  void Opens(HMENU menu);

  // The name that entry number `index` of those that there are at present stands for, which does not depend on what its
  // caption shows of it; null when there is none.
  const std::string* NameOf(unsigned index) const;

 private:
  void Empty();
  void AddEntries(const toolkit::ItemPlace& place, std::size_t begin, std::size_t end);

  toolkit::WindowMenu& menu_;
  const std::vector<std::string>* names_ = nullptr;
  std::vector<std::size_t> groups_;  // where each begins
  std::vector<HMENU> subMenus_;
  std::size_t begin_ = 0, end_ = 0;  // of the names that there are entries for
};

}  // namespace conversation
