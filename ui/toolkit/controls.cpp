#include "ui/toolkit/controls.h"

#include <algorithm>

#include "ui/toolkit/window.h"

namespace toolkit {
namespace {

constexpr UINT_PTR kLimitSubclass = 1, kTabSubclass = 2;

UINT MaxBytesOfCharacter() {
  CPINFO info{};
  return ::GetCPInfo(CP_ACP, &info) ? info.MaxCharSize : 1;
}

bool MayInsert(UINT message) {
  return message == WM_CHAR || message == WM_IME_CHAR || message == WM_IME_COMPOSITION || message == WM_PASTE ||
         message == EM_REPLACESEL;
}

// The size of what remains when the selection is replaced.
std::wstring Unselected(HWND edit) {
  std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(edit)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(::GetWindowTextW(edit, text.data(), static_cast<int>(text.size()))));
  DWORD start = 0, end = 0;
  ::SendMessageA(edit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
  return text.erase(std::min<std::size_t>(start, text.size()), end - start);
}

// The number of characters that fit whatever their size. A text that does not fit may fit in two steps, since the
// remaining space is computed again.
void SetLimit(HWND edit, int bytes) {
  const std::wstring text = Unselected(edit);
  const int length = static_cast<int>(text.size());
  const int used = ::WideCharToMultiByte(CP_ACP, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  const int more = std::max(bytes - used, 0) / static_cast<int>(MaxBytesOfCharacter());
  ::SendMessageA(edit, EM_SETLIMITTEXT, static_cast<WPARAM>(std::max(length + more, 1)), 0);
}

LRESULT CALLBACK LimitProcedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR bytes) {
  if (MayInsert(message)) SetLimit(edit, static_cast<int>(bytes));
  if (message == WM_NCDESTROY) ::RemoveWindowSubclass(edit, LimitProcedure, id);
  return ::DefSubclassProc(edit, message, wParam, lParam);
}

LRESULT CALLBACK WithoutSelectingProcedure(HWND textBox, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                           DWORD_PTR) {
  if (message == WM_NCDESTROY) ::RemoveWindowSubclass(textBox, WithoutSelectingProcedure, id);
  return WithoutSelecting(message, ::DefSubclassProc(textBox, message, wParam, lParam));
}

void MoveFocusByTab(HWND textBox) {
  const HWND window = ::GetAncestor(textBox, GA_ROOT);
  ::SetFocus(::GetNextDlgTabItem(window, textBox, KeyDown(VK_SHIFT)));
}

}  // namespace

void LimitBytes(HWND edit, std::size_t bytes) {
  ::SendMessageA(edit, EM_SETLIMITTEXT, bytes, 0);
  if (MaxBytesOfCharacter() > 1) ::SetWindowSubclass(edit, LimitProcedure, kLimitSubclass, bytes);
}

bool TranslateTextKey(const MSG& key) {
  const bool ctrl = KeyDown(VK_CONTROL);
  switch (key.wParam) {
    case VK_ESCAPE:
      return true;
    case VK_TAB:
      if (ctrl) return false;
      MoveFocusByTab(key.hwnd);
      return true;
    case 'A':
      if (!ctrl || KeyDown(VK_MENU)) return false;
      ::SendMessageA(key.hwnd, EM_SETSEL, 0, -1);
      return true;
    default:
      return false;
  }
}

void KeepSelectionAtTab(HWND textBox) { ::SetWindowSubclass(textBox, WithoutSelectingProcedure, kTabSubclass, 0); }

}  // namespace toolkit
