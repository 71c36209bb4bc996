// One line of text in the splash window. Not one of the system's labels: those load the common controls, which take
// longer than everything else that a start does before it joins the network.
#pragma once

#include "ui/toolkit/window.h"

namespace mainwindow {

class SplashLabel : public toolkit::Window {
 public:
  // The text is the window's; the font has to outlive it.
  void Load(HWND parent, const char* text, const toolkit::Area& place, HFONT font, COLORREF colour);

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  void Paint() const;

  HFONT font_ = nullptr;
  COLORREF colour_ = 0;
};

}  // namespace mainwindow
