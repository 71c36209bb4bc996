// The small window of the listening period: a picture, what is going on, the version, and a dot that pulses.
#pragma once

#include "ui/toolkit/handles.h"
#include "ui/toolkit/resting_timer.h"
#include "ui/toolkit/window.h"

namespace mainwindow {

class FrmSplash : public toolkit::Window {
 public:
  // Creates the window, hidden, with its bottom right corner in that of the work area.
  void Load();

  // Its texts are not translated: it stands while the language file has only just been read.
  void SetLan() {}

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  void PlaceControls();
  void Timer1Timer();
  void Draw(const DRAWITEMSTRUCT& request) const;
  void DrawDot(HDC dc, const RECT& inner) const;

  HWND picture1_ = nullptr, label_ = nullptr, picDot_ = nullptr, lblVer_ = nullptr;
  toolkit::Icon pictureIcon_;
  toolkit::Font versionFont_;
  toolkit::RestingTimer Timer1;
  int pulse_ = 0;
};

}  // namespace mainwindow
