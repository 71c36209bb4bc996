#include "ui/toolkit/toolbar_keys.h"

#include <commctrl.h>

namespace toolkit {
namespace {

constexpr UINT_PTR kSubclassId = 1;

int HotItem(HWND toolbar) { return static_cast<int>(::SendMessageA(toolbar, TB_GETHOTITEM, 0, 0)); }

void SetHotItem(HWND toolbar, int index) { ::SendMessageA(toolbar, TB_SETHOTITEM, static_cast<WPARAM>(index), 0); }

// The pressed button, or the first that can be used.
int FirstItem(HWND toolbar) {
  const int count = static_cast<int>(::SendMessageA(toolbar, TB_BUTTONCOUNT, 0, 0));
  int first = -1;
  for (int i = count - 1; i >= 0; --i) {
    TBBUTTON button{};
    ::SendMessageA(toolbar, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
    if (button.fsState & TBSTATE_CHECKED) return i;
    if (button.fsState & TBSTATE_ENABLED) first = i;
  }
  return first;
}

void Move(HWND toolbar, int step) {
  const int count = static_cast<int>(::SendMessageA(toolbar, TB_BUTTONCOUNT, 0, 0));
  int index = HotItem(toolbar);
  for (int tried = 0; tried < count; ++tried) {
    index = (index + step + count) % count;
    TBBUTTON button{};
    ::SendMessageA(toolbar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
    if (button.fsState & TBSTATE_ENABLED) return SetHotItem(toolbar, index);
  }
}

void Click(HWND toolbar) {
  TBBUTTON button{};
  const int index = HotItem(toolbar);
  if (index < 0) return;
  ::SendMessageA(toolbar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
  if (!(button.fsState & TBSTATE_ENABLED)) return;
  if (button.fsStyle & BTNS_CHECK) ::SendMessageA(toolbar, TB_CHECKBUTTON, static_cast<WPARAM>(button.idCommand), TRUE);
  ::SendMessageA(::GetParent(toolbar), WM_COMMAND, static_cast<WPARAM>(button.idCommand),
                 reinterpret_cast<LPARAM>(toolbar));
}

bool Pressed(HWND toolbar, WPARAM key) {
  switch (key) {
    case VK_LEFT:
    case VK_UP:
      Move(toolbar, -1);
      return true;
    case VK_RIGHT:
    case VK_DOWN:
      Move(toolbar, 1);
      return true;
    case VK_SPACE:
    case VK_RETURN:
      Click(toolbar);
      return true;
    default:
      return false;
  }
}

bool IsReturn(LPARAM message) {
  const auto* key = reinterpret_cast<const MSG*>(message);
  return key && key->wParam == VK_RETURN;
}

LRESULT CALLBACK Procedure(HWND toolbar, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
  switch (message) {
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | (IsReturn(lParam) ? DLGC_WANTMESSAGE : 0);
    case WM_KEYDOWN:
      if (Pressed(toolbar, wParam)) return 0;
      break;
    case WM_SETFOCUS: {
      const LRESULT result = ::DefSubclassProc(toolbar, message, wParam, lParam);  // which goes to the first button
      SetHotItem(toolbar, FirstItem(toolbar));
      return result;
    }
    case WM_KILLFOCUS:
      SetHotItem(toolbar, -1);
      break;
    case WM_NCDESTROY:
      ::RemoveWindowSubclass(toolbar, Procedure, id);
      break;
    default:
      break;
  }
  return ::DefSubclassProc(toolbar, message, wParam, lParam);
}

}  // namespace

void GiveKeys(HWND toolbar) {
  ::SetWindowLongPtrA(toolbar, GWL_STYLE, ::GetWindowLongPtrA(toolbar, GWL_STYLE) | WS_TABSTOP);
  ::SetWindowSubclass(toolbar, Procedure, kSubclassId, 0);
}

}  // namespace toolkit
