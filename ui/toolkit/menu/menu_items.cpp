#include "ui/toolkit/menu/menu_items.h"

#include <utility>

namespace toolkit {
namespace {

// Far from the small numbers and the addresses that others put into their item data.
CMyItemDatas::Key nextKey = 0x51000001u;

}  // namespace

CMyItemDatas::Key CMyItemDatas::Add(CMyItemData data) {
  const Key key = nextKey++;
  items_.emplace(key, std::move(data));
  return key;
}

const CMyItemData* CMyItemDatas::Item(Key key) const {
  const auto found = items_.find(key);
  return found == items_.end() ? nullptr : &found->second;
}

}  // namespace toolkit
