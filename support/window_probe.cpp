#include "support/window_probe.h"

#include <commctrl.h>

#include "core/globals.h"
#include "core/language.h"
#include "ui/toolkit/window.h"

namespace support {

std::vector<HWND> WindowsOf(const char* className) {
  std::vector<HWND> found;
  for (HWND hwnd = nullptr; (hwnd = ::FindWindowExA(nullptr, hwnd, className, nullptr)) != nullptr;) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(hwnd, &process);
    if (process == ::GetCurrentProcessId()) found.push_back(hwnd);
  }
  return found;
}

std::vector<HWND> ChildrenOf(HWND parent, const char* className) {
  std::vector<HWND> found;
  for (HWND child = nullptr; (child = ::FindWindowExA(parent, child, className, nullptr)) != nullptr;)
    found.push_back(child);
  return found;
}

HWND ChildOf(HWND parent, const char* className, const std::string& text) {
  for (const HWND child : ChildrenOf(parent, className))
    if (TextOf(child) == text) return child;
  return nullptr;
}

std::string TextOf(HWND hwnd) { return toolkit::TextOf(hwnd); }

std::string MenuText(HMENU menu, int position) {
  char text[300] = "";
  ::GetMenuStringA(menu, static_cast<UINT>(position), text, sizeof text, MF_BYPOSITION);
  return text;
}

std::string ClipboardText() {
  ::OpenClipboard(nullptr);
  const HANDLE data = ::GetClipboardData(CF_TEXT);
  const std::string text = data ? static_cast<const char*>(::GlobalLock(data)) : "(none)";
  if (data) ::GlobalUnlock(data);
  ::CloseClipboard();
  return text;
}

int ToolCommand(HWND window, int index) {
  const HWND toolbar = ChildrenOf(window, TOOLBARCLASSNAMEA).at(0);
  TBBUTTON button{};
  ::SendMessageA(toolbar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
  return button.idCommand;
}

void ClickToolButton(HWND window, int index) {
  ::SendMessageA(window, WM_COMMAND, static_cast<WPARAM>(ToolCommand(window, index)), 0);
}

std::vector<std::string> RowTexts(HWND listView) {
  std::vector<std::string> texts;
  for (int row = 0; row < ListView_GetItemCount(listView); ++row) {
    char text[260] = "";
    LVITEMA item{};
    item.pszText = text;
    item.cchTextMax = sizeof text;
    ::SendMessageA(listView, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    texts.emplace_back(text);
  }
  return texts;
}

void SelectRow(HWND listView, int row, bool selected) {
  ListView_SetItemState(listView, row, selected ? LVIS_SELECTED | LVIS_FOCUSED : 0, LVIS_SELECTED | LVIS_FOCUSED);
}

void SetLanguage(const char* language) {
  core::gLanguage = language;
  core::gLangError = 0;
  core::LoadLang();
}

bool FilterKey(HWND target, UINT message, WPARAM key, int heldKey) {
  BYTE keys[256] = {};
  keys[heldKey] = heldKey ? 0x80 : 0;
  ::SetKeyboardState(keys);
  MSG pressed{};
  pressed.hwnd = target;
  pressed.message = message;
  pressed.wParam = key;
  const bool taken = toolkit::FilterMessage(pressed);
  keys[heldKey] = 0;
  ::SetKeyboardState(keys);
  return taken;
}

RECT PlaceOf(HWND hwnd) {
  RECT place{};
  ::GetWindowRect(hwnd, &place);
  return place;
}

}  // namespace support
