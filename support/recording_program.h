// Fake windows and a fake network for tests: every call is an event of the recording desktop. The roster is real.
#pragma once

#include <functional>
#include <string>

#include "core/globals.h"
#include "core/program.h"
#include "support/recording_desktop.h"
#include "ui/main/user_roster.h"

namespace support {

class RecordingProgram : public core::Program {
 public:
  mainwindow::UserRoster users;
  core::WindowBounds place{300, 150, 2505, 4605};
  core::WindowBounds screen{0, 0, 15360, 11520};  // 1024 x 768 at 96 dpi
  std::function<void()> onOpenSocket, onOptions;

  void LoadMain() override { Record("load main"); }
  void MoveMain(const core::WindowBounds& to) override {
    place = to;
    Record("move main");
  }
  core::WindowBounds RestoreMain() override {
    Record("restore main");
    return place;
  }
  core::Roster& Users() override { return users; }
  void ShowSplash() override { Record("show splash"); }
  void HideSplash() override { Record("hide splash"); }
  core::WindowBounds Screen() override { return screen; }
  void OpenSocket() override {
    Record("open " + core::gCurName + (core::gStarting != 0 ? " quietly" : ""));
    if (onOpenSocket) onOpenSocket();
  }
  void CloseSocket() override { Record("close " + core::gCurName); }
  void ShowOptionsAtStartUp() override {
    Record("options");
    if (onOptions) onOptions();
  }
  void ShowTray() override { Record("show tray"); }
  void RemoveTray() override { Record("remove tray"); }
};

}  // namespace support
