#include "ui/options/page.h"

namespace options {

void Page::Load(HWND parent, const char* className) {
  Create({.className = className, .style = WS_CHILD | WS_CLIPSIBLINGS, .exStyle = WS_EX_CONTROLPARENT}, "", {}, parent);
}

LRESULT Page::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
      return ::SendMessageA(::GetParent(hwnd()), message, wParam, lParam);
    case WM_PAINT:
      if (!paint) break;
      Paint();
      return 0;
    default:
      break;
  }
  return Window::Handle(message, wParam, lParam);
}

void Page::Paint() const {
  PAINTSTRUCT request{};
  const HDC dc = ::BeginPaint(hwnd(), &request);
  RECT client{};
  ::GetClientRect(hwnd(), &client);
  paint(dc, client);
  ::EndPaint(hwnd(), &request);
}

}  // namespace options
