#include "ui/main/splash_label.h"

#include "core/wide_text_win32.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/screen.h"

namespace mainwindow {

void SplashLabel::Load(HWND parent, const char* text, const toolkit::Area& place, HFONT font, COLORREF colour) {
  font_ = font;
  colour_ = colour;
  Create({"SplashLabel", WS_CHILD | WS_VISIBLE, 0, COLOR_WINDOW}, text, place, parent);
}

LRESULT SplashLabel::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_PAINT) return Window::Handle(message, wParam, lParam);
  Paint();
  return 0;
}

void SplashLabel::Paint() const {
  PAINTSTRUCT paint{};
  const HDC dc = ::BeginPaint(hwnd(), &paint);
  {
    const toolkit::Selected font(dc, font_);
    ::SetTextColor(dc, colour_);
    ::SetBkMode(dc, TRANSPARENT);
    const std::wstring text = core::Wide(Text());
    ::TextOutW(dc, 0, 0, text.data(), static_cast<int>(text.size()));
  }
  ::EndPaint(hwnd(), &paint);
}

}  // namespace mainwindow
