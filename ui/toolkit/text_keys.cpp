#include "ui/toolkit/text_keys.h"

#include <commctrl.h>

#include "ui/toolkit/window.h"

namespace toolkit {
namespace {

constexpr UINT_PTR kSubclass = 1;

LRESULT CALLBACK Procedure(HWND textBox, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
  if (message == WM_NCDESTROY) ::RemoveWindowSubclass(textBox, Procedure, id);
  return WithoutSelecting(message, ::DefSubclassProc(textBox, message, wParam, lParam));
}

void LeaveByTab(HWND textBox) {
  const HWND window = ::GetAncestor(textBox, GA_ROOT);
  ::SetFocus(::GetNextDlgTabItem(window, textBox, KeyDown(VK_SHIFT)));
}

}  // namespace

bool TranslateTextKey(const MSG& key) {
  const bool ctrl = KeyDown(VK_CONTROL);
  switch (key.wParam) {
    case VK_ESCAPE:
      return true;
    case VK_TAB:
      if (ctrl) return false;
      LeaveByTab(key.hwnd);
      return true;
    case 'A':
      if (!ctrl || KeyDown(VK_MENU)) return false;
      ::SendMessageA(key.hwnd, EM_SETSEL, 0, -1);
      return true;
    default:
      return false;
  }
}

void KeepSelectionAtTab(HWND textBox) { ::SetWindowSubclass(textBox, Procedure, kSubclass, 0); }

}  // namespace toolkit
