// mnuUser: menu entries for the users online.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ui/toolkit/menu/window_menu.h"

namespace conversation {

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
