// The splash window of the listening period: a picture, a status text, the version, and a pulsing dot.
#pragma once

#include <memory>

#include "ui/toolkit/handles.h"
#include "ui/toolkit/adaptive_timer.h"
#include "ui/toolkit/window.h"

namespace mainwindow {

// A line of text in the splash window. Not a system label, which would load the common controls: that takes longer than
// everything else before joining the network.
class SplashLabel : public toolkit::Window {
 public:
  // The font must outlive it.
  void Load(HWND parent, const char* text, const toolkit::Area& place, HFONT font, COLORREF colour);

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  void Paint() const;

  HFONT font_ = nullptr;
  COLORREF colour_ = 0;
};

class FrmSplash : public toolkit::Window {
 public:
  // Creates the window, hidden, in the bottom right corner of the work area.
  void Load();

  // Shows it topmost, without blocking and without taking the focus.
  void ShowOnTop();

  // Its texts are not translated, because it is shown just after the language file was read.
  void SetLan() override {}

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  void CreateControls();
  void Timer1Timer();
  void Paint() const;
  void DrawDot(HDC dc) const;

  RECT Picture1{}, picDot{};  // painted, in the client area
  toolkit::Icon pictureIcon_;
  toolkit::Font versionFont_;
  std::shared_ptr<SplashLabel> label_ = std::make_shared<SplashLabel>(), lblVer = std::make_shared<SplashLabel>();
  toolkit::AdaptiveTimer Timer1;
  int pulse_ = 0;
};

}  // namespace mainwindow
