// The data of all converted items of a window's menus. A converted item carries the key of its entry as its item data,
// never an address, so that a stale value or the data of somebody else's owner-drawn item finds nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>

#include "ui/toolkit/menu/menu_caption.h"

namespace toolkit {

class CMyItemDatas {
 public:
  using Key = std::uintptr_t;

  // The key is never 0 and never given twice in a run, in whatever collection.
  Key Add(CMyItemData data);

  // Null for an unknown key.
  const CMyItemData* Item(Key key) const;

  std::size_t Count() const { return items_.size(); }

  // Nothing happens for an unknown key.
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

}  // namespace toolkit
