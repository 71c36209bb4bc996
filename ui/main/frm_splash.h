// The small window of the listening period: a picture, what is going on, the version, and a dot that pulses.
#pragma once

#include <memory>

#include "ui/toolkit/handles.h"
#include "ui/toolkit/resting_timer.h"
#include "ui/toolkit/window.h"

namespace mainwindow {

// One line of text in the splash window. Not one of the system's labels: those load the common controls, which take
// longer than everything else that a start does before it joins the network.
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

class FrmSplash : public toolkit::Window {
 public:
  // Creates the window, hidden, with its bottom right corner in that of the work area.
  void Load();

  // Without blocking or taking the keyboard, above all other windows.
  void ShowOnTop();

  // Its texts are not translated: it stands while the language file has only just been read.
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
  toolkit::RestingTimer Timer1;
  int pulse_ = 0;
};

}  // namespace mainwindow
