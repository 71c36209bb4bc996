#include "ui/toolkit/menu/cool_menu_convert.h"

#include <array>
#include <string>

namespace toolkit {
namespace {

constexpr UINT kReadMask = MIIM_ID | MIIM_SUBMENU | MIIM_TYPE | MIIM_DATA;
static_assert(kReadMask == 0x36);

// The size of the record without its last field, which later versions of Windows added: 44 bytes in the 32-bit program.
constexpr UINT kInfoSize = sizeof(MENUITEMINFOA) - sizeof(HBITMAP);
static_assert(sizeof(void*) != 4 || kInfoSize == 44);

constexpr std::size_t kTextBuffer = 201;
using TextBuffer = std::array<char, kTextBuffer>;

bool ReadItem(HMENU menu, int position, MENUITEMINFOA& info, TextBuffer& text) {
  info = {};
  text.front() = '\0';
  info.cbSize = kInfoSize;
  info.fMask = kReadMask;
  info.dwTypeData = text.data();
  info.cch = kTextBuffer;
  return ::GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info) != 0;
}

void WriteItem(HMENU menu, int position, MENUITEMINFOA& info) {
  info.cbSize = kInfoSize;
  ::SetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info);
}

CMyItemData DataOf(const MENUITEMINFOA& info, const TextBuffer& text, const ConvertImages& images, bool mainMenu) {
  CMyItemData data = ParseCaption(text.data());
  data.fType |= static_cast<std::int32_t>(info.fType);
  data.bTrueSub = info.hSubMenu != nullptr;
  data.bMainMenu = mainMenu;
  if (images.tags && !IsSeparator(data)) data.iButton = images.tags->Find(data.sMenuText, images.count);
  return data;
}

// Changes the type only: the item keeps its text, for screen readers. Headings are disabled like separators, so that
// arrow keys skip them.
void ConvertItem(HMENU menu, int position, const CMyItemData& data, CMyItemDatas::Key key) {
  MENUITEMINFOA info{};
  info.fMask = MIIM_FTYPE | MIIM_DATA;
  info.fType = static_cast<UINT>(data.fType) | MFT_OWNERDRAW;
  info.dwItemData = key;
  if (IsSeparator(data)) {
    info.fMask |= MIIM_STATE;
    info.fState = MFS_DISABLED;
  }
  WriteItem(menu, position, info);
}

void RestoreItem(HMENU menu, int position, const CMyItemData& data) {
  std::string text = RestoreCaption(data);
  const bool hadText = !IsSeparator(data) || IsHeading(data);
  MENUITEMINFOA info{};
  info.fMask = MIIM_TYPE | MIIM_DATA;
  info.fType = hadText ? static_cast<UINT>(data.fType & ~kSeparatorType) : static_cast<UINT>(data.fType);
  info.dwTypeData = hadText ? text.data() : nullptr;
  if (IsHeading(data)) {
    info.fMask |= MIIM_STATE;
    info.fState = MFS_ENABLED;
  }
  WriteItem(menu, position, info);
}

// Calls visit(menu, position, item) for every item of the tree; the item's text is not read.
template <class Visit>
void EachItem(HMENU menu, Visit visit) {
  const int count = ::GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    MENUITEMINFOA info{};
    info.cbSize = kInfoSize;
    info.fMask = MIIM_SUBMENU | MIIM_FTYPE | MIIM_DATA;
    if (!::GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info)) continue;
    visit(menu, position, info);
    if (info.hSubMenu) EachItem(info.hSubMenu, visit);
  }
}

}  // namespace

void ConvertMenu(HMENU menu, CMyItemDatas& datas, const ConvertImages& images, bool mainMenu) {
  const int count = ::GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    MENUITEMINFOA info{};
    TextBuffer text{};
    if (!ReadItem(menu, position, info, text)) continue;
    if ((info.fType & (MFT_OWNERDRAW | MFT_BITMAP)) == 0) {
      CMyItemData data = DataOf(info, text, images, mainMenu);
      ConvertItem(menu, position, data, datas.Add(data));
    }
    if (info.hSubMenu && !mainMenu) ConvertMenu(info.hSubMenu, datas, images, false);
  }
}

void RestoreMenu(HMENU menu, CMyItemDatas& datas) {
  EachItem(menu, [&datas](HMENU parent, int position, const MENUITEMINFOA& info) {
    const CMyItemData* data = datas.Item(info.dwItemData);
    if ((info.fType & MFT_OWNERDRAW) == 0 || !data) return;
    RestoreItem(parent, position, *data);
    datas.Remove(info.dwItemData);
  });
}

void RemeasureMenu(HMENU menu, const CMyItemDatas& datas) {
  EachItem(menu, [&datas](HMENU parent, int position, const MENUITEMINFOA& info) {
    const CMyItemData* data = datas.Item(info.dwItemData);
    if ((info.fType & MFT_OWNERDRAW) != 0 && data) ConvertItem(parent, position, *data, info.dwItemData);
  });
}

void CollectKeys(HMENU menu, const CMyItemDatas& datas, std::vector<CMyItemDatas::Key>& keys) {
  EachItem(menu, [&](HMENU, int, const MENUITEMINFOA& info) {
    if ((info.fType & MFT_OWNERDRAW) != 0 && datas.Item(info.dwItemData)) keys.push_back(info.dwItemData);
  });
}

}  // namespace toolkit
