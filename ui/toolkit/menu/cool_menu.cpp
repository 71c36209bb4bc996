#include "ui/toolkit/menu/cool_menu.h"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "core/callback_guard.h"

namespace toolkit {
namespace {

// The subclass procedure. Only forwards once the object is gone: a later subclass may still call it.
struct Hook {
  WNDPROC prevProc;
  WndCoolMenu* object;
};

std::unordered_map<HWND, Hook>& Hooks() {
  static std::unordered_map<HWND, Hook> hooks;
  return hooks;
}

WNDPROC ProcedureOf(HWND hwnd) { return reinterpret_cast<WNDPROC>(::GetWindowLongPtrA(hwnd, GWLP_WNDPROC)); }

WNDPROC SetProcedure(HWND hwnd, WNDPROC procedure) {
  return reinterpret_cast<WNDPROC>(::SetWindowLongPtrA(hwnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

MENUITEMINFOA ItemInfo(HMENU menu, UINT item, bool byPosition, UINT mask) {
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = mask;
  if (!::GetMenuItemInfoA(menu, item, byPosition, &info)) info = {};
  return info;
}

// The item's data if it is one of ours; null otherwise.
const CMyItemData* DataOf(const CMyItemDatas& items, const MENUITEMINFOA& info) {
  return (info.fType & MFT_OWNERDRAW) != 0 ? items.Item(info.dwItemData) : nullptr;
}

// Conversion of the items of a menu tree to owner-drawn ones, and back.

// The images for a conversion; none without an image list.
struct ConvertImages {
  const ImageTags* tags = nullptr;
  int count = 0;
};

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

CMyItemData ParseItem(const MENUITEMINFOA& info, const TextBuffer& text, const ConvertImages& images, bool mainMenu) {
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

// Converts every item of the menu and its sub-menus that is not owner-drawn yet: adds its data to the collection and
// stores the key in the item. Skips menus that cannot be read. `mainMenu`: the menu is the bar; its drop-downs are
// skipped.
void ConvertMenu(HMENU menu, CMyItemDatas& datas, const ConvertImages& images, bool mainMenu) {
  const int count = ::GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    MENUITEMINFOA info{};
    TextBuffer text{};
    if (!ReadItem(menu, position, info, text)) continue;
    if ((info.fType & (MFT_OWNERDRAW | MFT_BITMAP)) == 0) {
      CMyItemData data = ParseItem(info, text, images, mainMenu);
      ConvertItem(menu, position, data, datas.Add(data));
    }
    if (info.hSubMenu && !mainMenu) ConvertMenu(info.hSubMenu, datas, images, false);
  }
}

// Restores the authored captions of all converted items of the tree and removes their data.
void RestoreMenu(HMENU menu, CMyItemDatas& datas) {
  EachItem(menu, [&datas](HMENU parent, int position, const MENUITEMINFOA& info) {
    const CMyItemData* data = datas.Item(info.dwItemData);
    if ((info.fType & MFT_OWNERDRAW) == 0 || !data) return;
    RestoreItem(parent, position, *data);
    datas.Remove(info.dwItemData);
  });
}

// Sets the converted items again, so that the system queries their sizes again.
void RemeasureMenu(HMENU menu, const CMyItemDatas& datas) {
  EachItem(menu, [&datas](HMENU parent, int position, const MENUITEMINFOA& info) {
    const CMyItemData* data = datas.Item(info.dwItemData);
    if ((info.fType & MFT_OWNERDRAW) != 0 && data) ConvertItem(parent, position, *data, info.dwItemData);
  });
}

// Appends the keys of all converted items of the tree to the list.
void CollectKeys(HMENU menu, const CMyItemDatas& datas, std::vector<CMyItemDatas::Key>& keys) {
  EachItem(menu, [&](HMENU, int, const MENUITEMINFOA& info) {
    if ((info.fType & MFT_OWNERDRAW) != 0 && datas.Item(info.dwItemData)) keys.push_back(info.dwItemData);
  });
}

}  // namespace

void WndCoolMenu::Attach(HWND host) {
  host_ = host;
  prevProc_ = ProcedureOf(host_);
  Hooks().insert_or_assign(host_, Hook{prevProc_, this});
  SetProcedure(host_, Procedure);
}

WndCoolMenu::~WndCoolMenu() {
  RestoreAll();
  Unhook();
}

void WndCoolMenu::Unhook() {
  const auto hook = Hooks().find(host_);
  if (hook == Hooks().end()) return;
  hook->second.object = nullptr;
  if (ProcedureOf(host_) == Procedure) {
    SetProcedure(host_, prevProc_);
    Hooks().erase(hook);
  }
  host_ = nullptr;
}

void WndCoolMenu::AddMenuBar() {
  const HMENU bar = ::GetMenu(host_);
  const int count = ::GetMenuItemCount(bar);
  for (int position = 0; position < count; ++position)
    if (const HMENU head = ::GetSubMenu(bar, position)) heads_.push_back(head);
  Convert();
}

void WndCoolMenu::AddMenuHead(HMENU menu) {
  heads_.push_back(menu);
  Convert();
}

HMENU WndCoolMenu::GetMenuHead(int index) const {
  return index >= 0 && index < CountMenuHeads() ? heads_[static_cast<std::size_t>(index)] : nullptr;
}

void WndCoolMenu::Convert() {
  if (!host_) return;
  fonts_ = MakeMenuFonts(look);
  const ConvertImages images{look.ilHandle ? &imageTags : nullptr,
                             look.ilHandle ? ::ImageList_GetImageCount(look.ilHandle) : 0};
  if (SCMainMenu) ConvertMenu(::GetMenu(host_), items_, images, true);
  for (const HMENU head : heads_) ConvertMenu(head, items_, images, false);
  ForgetMissing();
}

// Other code deletes items too, for instance when a list of users is rebuilt.
void WndCoolMenu::ForgetMissing() {
  std::vector<CMyItemDatas::Key> present;
  for (const HMENU root : Roots()) CollectKeys(root, items_, present);
  std::sort(present.begin(), present.end());
  items_.RemoveIf([&](CMyItemDatas::Key key) { return !std::binary_search(present.begin(), present.end(), key); });
}

void WndCoolMenu::ChangeCaptions(const std::function<void()>& change) {
  RestoreAll();
  change();
  Convert();
}

void WndCoolMenu::Restore(HMENU menu) {
  RestoreMenu(menu, items_);
  std::erase(heads_, menu);
}

void WndCoolMenu::RestoreAll() {
  for (const HMENU root : Roots()) RestoreMenu(root, items_);
}

std::vector<HMENU> WndCoolMenu::Roots() const {
  std::vector<HMENU> roots = heads_;
  if (SCMainMenu && host_) roots.push_back(::GetMenu(host_));
  return roots;
}

LRESULT CALLBACK WndCoolMenu::Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto found = Hooks().find(hwnd);
  if (found == Hooks().end()) return ::DefWindowProcA(hwnd, message, wParam, lParam);
  const Hook hook = found->second;
  LRESULT result = 0;
  const auto answer = [&] { return hook.object->Answer(message, wParam, lParam, result); };
  // Silently: an item that cannot be drawn would show a message box on every movement of the mouse.
  if (hook.object && core::GuardedSilently(answer)) return result;
  if (message == WM_NCDESTROY) {
    if (hook.object) hook.object->Unhook();
    Hooks().erase(hwnd);
  }
  return ::CallWindowProcA(hook.prevProc, hwnd, message, wParam, lParam);
}

// True when the message was handled; the window's own procedure does not get it then.
bool WndCoolMenu::Answer(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
  switch (message) {
    case WM_MEASUREITEM:
      result = TRUE;
      return Measure(*reinterpret_cast<MEASUREITEMSTRUCT*>(lParam));
    case WM_DRAWITEM:
      result = TRUE;
      return Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
    case WM_MENUCHAR:
      return AnswerKey(wParam, reinterpret_cast<HMENU>(lParam), result);
    case WM_INITMENUPOPUP:
      NoteOpened(reinterpret_cast<HMENU>(wParam));
      return false;
    case WM_MENUSELECT:
      ReportHelp(wParam, reinterpret_cast<HMENU>(lParam));
      return false;
    case WM_SETTINGCHANGE:
      RenewFonts();
      return false;
    default:
      return false;
  }
}

bool WndCoolMenu::Measure(MEASUREITEMSTRUCT& request) {
  const CMyItemData* data = request.CtlType == ODT_MENU ? items_.Item(request.itemData) : nullptr;
  if (!data) return false;
  core::GuardedSilently([&] {
    const SIZE size = MeasureMenuItem(WindowDc(host_).get(), look, fonts_, *data);
    request.itemWidth = static_cast<UINT>(std::max<LONG>(size.cx, 0));
    request.itemHeight = static_cast<UINT>(size.cy);
  });
  return true;
}

bool WndCoolMenu::Draw(const DRAWITEMSTRUCT& request) {
  const CMyItemData* data = request.CtlType == ODT_MENU ? items_.Item(request.itemData) : nullptr;
  if (!data) return false;
  core::GuardedSilently([&] { DrawMenuItem(request, look, fonts_, *data); });
  return true;
}

void WndCoolMenu::NoteOpened(HMENU menu) {
  const auto head = std::find(heads_.begin(), heads_.end(), menu);
  if (head != heads_.end()) openHead_ = static_cast<int>(head - heads_.begin());
}

// Without a menu: the menu has closed. The handler may do anything, even destroy this object, so it is called last.
void WndCoolMenu::ReportHelp(WPARAM wParam, HMENU menu) {
  if (!menu) openHead_ = -1;
  const bool byPosition = (HIWORD(wParam) & MF_POPUP) != 0;
  const CMyItemData* data =
      menu ? DataOf(items_, ItemInfo(menu, LOWORD(wParam), byPosition, MIIM_FTYPE | MIIM_DATA)) : nullptr;
  const auto tell = help.MenuHelp;
  const std::string text = data ? data->sMenuHelp : std::string();
  if (tell) tell(text);
}

bool WndCoolMenu::AnswerKey(WPARAM wParam, HMENU menu, LRESULT& result) const {
  std::vector<MnemonicItem> items;
  const int count = ::GetMenuItemCount(menu);
  for (int position = 0; position < count; ++position) {
    const MENUITEMINFOA info = ItemInfo(menu, static_cast<UINT>(position), true, MIIM_FTYPE | MIIM_DATA | MIIM_STATE);
    const CMyItemData* data = DataOf(items_, info);
    items.push_back({data ? std::string_view(data->sMenuText) : std::string_view(), data && !IsSeparator(*data),
                     (info.fState & MFS_DISABLED) == 0, (info.fState & MFS_HILITE) != 0});
  }
  const MnemonicChoice choice = ChooseByMnemonic(items, static_cast<char>(LOWORD(wParam)));
  if (choice.position < 0) return false;
  result = MAKELRESULT(choice.position, choice.execute ? MNC_EXECUTE : MNC_SELECT);
  return true;
}

// The system's fonts have changed: the item sizes that Windows caches are outdated.
void WndCoolMenu::RenewFonts() {
  fonts_ = MakeMenuFonts(look);
  for (const HMENU root : Roots()) RemeasureMenu(root, items_);
}

}  // namespace toolkit
