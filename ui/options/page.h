// A child window that holds controls for the window around it: what they report goes on to that window.
#pragma once

#include <functional>

#include "ui/toolkit/window.h"

namespace options {

class Page : public toolkit::Window {
 public:
  // Creates it, hidden, without a size. The class name tells black-box observers what it is.
  void Load(HWND parent, const char* className);

  using Window::AddControl;
  using Window::AddName;
  using Window::AddToolbar;

  // Paints the client area, pixels; the background of a dialog where there is none.
  std::function<void(HDC dc, const RECT& client)> paint;

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  void Paint() const;
};

}  // namespace options
