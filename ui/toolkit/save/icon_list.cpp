#include "ui/toolkit/save/icon_list.h"

#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>
#include <map>

#include "core/code_page.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

constexpr Twips kGap = 4_dp, kIndent = 12_dp;
constexpr int kIndentShift = 24;  // position of the level in an entry's number, above the icon

int IconSide() { return ::GetSystemMetrics(SM_CXSMICON); }

// The image list belongs to the system.
HIMAGELIST SystemIcons(const char* name, DWORD attributes, UINT flags, int& index) {
  SHFILEINFOA info{};
  const DWORD_PTR list = ::SHGetFileInfoA(name, attributes, &info, sizeof info,
                                          SHGFI_SYSICONINDEX | SHGFI_SMALLICON | SHGFI_USEFILEATTRIBUTES | flags);
  index = info.iIcon;
  return reinterpret_cast<HIMAGELIST>(list);
}

int IconOf(const char* name, DWORD attributes, UINT flags) {
  int index = 0;
  SystemIcons(name, attributes, flags, index);
  return index;
}

HIMAGELIST SystemIcons() {
  int index = 0;
  static const HIMAGELIST list = SystemIcons("folder", FILE_ATTRIBUTE_DIRECTORY, 0, index);
  return list;
}

int LeftOf(int indent) { return Px(kGap) + Px(kIndent) * indent; }

}  // namespace

int ClosedFolderIcon() {
  static const int icon = IconOf("folder", FILE_ATTRIBUTE_DIRECTORY, 0);
  return icon;
}

int OpenFolderIcon() {
  static const int icon = IconOf("folder", FILE_ATTRIBUTE_DIRECTORY, SHGFI_OPENICON);
  return icon;
}

int FileIcon(const std::string& name) {
  static std::map<std::string, int> known;
  const std::size_t point = name.rfind('.');
  const std::string extension = point == std::string::npos ? std::string() : name.substr(point);
  const auto [entry, isNew] = known.try_emplace(extension);
  if (isNew) entry->second = IconOf(("file" + extension).c_str(), FILE_ATTRIBUTE_NORMAL, 0);
  return entry->second;
}

void IconList::Attach(HWND listBox) {
  hwnd_ = listBox;
  ::SendMessageA(hwnd_, LB_SETITEMHEIGHT, 0, std::max(LineHeight(), IconSide()) + Px(2_dp));
}

void IconList::Fill(const std::vector<Entry>& entries) {
  ::SendMessageA(hwnd_, WM_SETREDRAW, FALSE, 0);
  ::SendMessageA(hwnd_, LB_RESETCONTENT, 0, 0);
  ::SendMessageA(hwnd_, LB_INITSTORAGE, entries.size(), 64);
  int widest = 0;
  const WindowDc dc(hwnd_);
  const ScopedSelection font(dc.get(), DialogFont());
  for (const Entry& entry : entries) {
    const LRESULT index = ::SendMessageA(hwnd_, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.text.c_str()));
    ::SendMessageA(hwnd_, LB_SETITEMDATA, static_cast<WPARAM>(index), entry.icon | entry.indent << kIndentShift);
    const SIZE size = MeasureText(dc.get(), entry.text);
    widest = std::max(widest, LeftOf(entry.indent) + IconSide() + Px(2 * kGap) + static_cast<int>(size.cx));
  }
  ::SendMessageA(hwnd_, LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(widest), 0);
  ::SendMessageA(hwnd_, WM_SETREDRAW, TRUE, 0);
  ::InvalidateRect(hwnd_, nullptr, TRUE);
}

void IconList::SelectText(const std::string& text) {
  const auto index =
      ::SendMessageA(hwnd_, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str()));
  Select(static_cast<int>(index));
}

std::string IconList::TextAt(int index) const {
  const LRESULT length = ::SendMessageA(hwnd_, LB_GETTEXTLEN, static_cast<WPARAM>(index), 0);
  if (length < 0) return {};
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  ::SendMessageA(hwnd_, LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
  text.pop_back();
  return text;
}

void IconList::Draw(const DRAWITEMSTRUCT& request) const {
  const bool selected = (request.itemState & ODS_SELECTED) != 0;
  ::FillRect(request.hDC, &request.rcItem, ::GetSysColorBrush(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW));
  const int index = static_cast<int>(request.itemID);
  if (index >= 0) {
    const auto data = static_cast<unsigned>(request.itemData);
    RECT place = request.rcItem;
    place.left += LeftOf(static_cast<int>(data >> kIndentShift));
    ::ImageList_Draw(SystemIcons(), static_cast<int>(data & ((1u << kIndentShift) - 1)), request.hDC, place.left,
                     place.top + (place.bottom - place.top - IconSide()) / 2, ILD_TRANSPARENT);
    place.left += IconSide() + Px(kGap);
    ::SetTextColor(request.hDC, ::GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    ::SetBkMode(request.hDC, TRANSPARENT);
    ::DrawTextW(request.hDC, core::Wide(TextAt(index)).c_str(), -1, &place, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  }
  if ((request.itemState & ODS_FOCUS) && !(request.itemState & ODS_NOFOCUSRECT))
    ::DrawFocusRect(request.hDC, &request.rcItem);
}

}  // namespace toolkit
