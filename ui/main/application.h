// Composes the program: connects windows, network and roster. Lower layers use the abstract classes that it implements.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/program.h"
#include "net/broadcast_socket_win32.h"
#include "net/dispatcher.h"
#include "net/messenger.h"
#include "ui/conversation/open_windows.h"
#include "ui/main/frm_about.h"
#include "ui/main/frm_main.h"
#include "ui/main/frm_splash.h"
#include "ui/main/user_roster.h"
#include "ui/options/frm_opt.h"

namespace mainwindow {

class Application : public core::Program {
 public:
  Application();

  void LoadMain() override;
  void MoveMain(const core::WindowBounds& bounds) override;
  core::WindowBounds RestoreMain() override;
  core::Roster& Users() override { return users_; }
  void ShowSplash() override;
  void HideSplash() override;
  core::WindowBounds Screen() override;
  void OpenSocket() override;
  void CloseSocket() override { messenger_.CloseSocket(); }
  void ShowOptionsAtStartUp() override;
  void ShowTray() override;
  void RemoveTray() override;

 private:
  MainCommands Commands();
  void DataArrived(std::string_view data);
  void ShowAbout();
  void ShowOptions(bool atStartUp);

  UserRoster users_;
  net::BroadcastSocket sktBC_;
  net::Messenger messenger_;
  conversation::OpenWindows conversations_;
  net::Dispatcher dispatcher_;
  std::shared_ptr<FrmMain> frmMain_;
  std::shared_ptr<FrmSplash> frmSplash_;
  std::shared_ptr<FrmAbout> frmAbout_;
  std::shared_ptr<options::FrmOpt> frmOpt_;
};

}  // namespace mainwindow
