// The About window: version, notices, and a link to the maker's web site.
#pragma once

#include <span>

#include "ui/toolkit/handles.h"
#include "ui/toolkit/window.h"

namespace mainwindow {

class FrmAbout : public toolkit::Window {
 public:
  ~FrmAbout() override { ResetFont(); }

  // Creates the window, hidden, centred in the work area.
  void Load();

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  std::span<const toolkit::Command> Commands() const override;
  void LayOut() override;
  void ResetFont() const;
  void Close() { ::DestroyWindow(hwnd()); }

  HWND lblName = nullptr, lblVersion = nullptr, lblMaker = nullptr, lblRights = nullptr, lnkWeb = nullptr,
       cmdClose = nullptr;
  HWND picIcon = nullptr;
  toolkit::Font nameFont_;
  toolkit::Icon icon_;
};

}  // namespace mainwindow
