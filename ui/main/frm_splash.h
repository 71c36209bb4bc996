// The small window of the listening period: a picture, what is going on, the version, and a dot that pulses.
#pragma once

#include <memory>

#include "ui/main/splash_label.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/resting_timer.h"
#include "ui/toolkit/window.h"

namespace mainwindow {

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
