// The main window: the roster, its toolbar and status line, the menus and the notification icon. It lives for the whole
// run, mostly hidden.
#pragma once

#include <functional>
#include <span>
#include <string>

#include "core/program.h"
#include "net/messenger.h"
#include "ui/main/main_menu.h"
#include "ui/main/user_roster.h"
#include "ui/toolkit/menu/window_menu.h"
#include "ui/toolkit/adaptive_timer.h"
#include "ui/toolkit/rows_view.h"
#include "ui/toolkit/toolbar.h"
#include "ui/toolkit/tray_icon.h"
#include "ui/toolkit/units.h"
#include "ui/toolkit/window.h"

namespace mainwindow {

// The actions of the main window's commands, connected by Application.
struct MainCommands {
  std::function<void(const std::string& recipients)> openComposer;
  std::function<void(const std::string& participants)> openChat;
  std::function<void()> showOptions;
  std::function<void()> showAbout;
  std::function<void()> shutDown;
};

class FrmMain : public toolkit::Window {
 public:
  FrmMain(UserRoster& users, net::Messenger& messenger, MainCommands commands);

  // Creates the window, hidden and without controls, and clears the roster.
  void Load();

  // Creates controls, menus and icon on the first call. Deferred, so that start-up joins the network first.
  void CreateContents();

  void Move(const core::WindowBounds& bounds);

  // Restores the window from its minimised or maximised state without showing it; returns its normal bounds, twips.
  core::WindowBounds Restore();

  // Adds the notification icon. If that is not possible within a minute, shows the window, so that the program can be
  // used.
  void ShowTray();
  void RemoveTray() { TI.Destroy(); }

  // Shows the window and brings it to the front.
  void ShowMe();

  void SetLan() override;

  // To be called when the roster changes, on every packet. A hidden window still updates at the slow rate.
  void Wake();

  // Shows a menu item's help text in the status line; the empty text restores the counts.
  void HelpObj_MenuHelp(const std::string& text);

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  void CreateControls();
  void SetUpInt();
  void SetUpMenus();
  void LayOut() override;
  void LayOutColumns(toolkit::Twips list);
  void OnSize(WPARAM kind);
  void KeepHidden(WINDOWPOS& change) const;
  LRESULT OnNotify(LPARAM lParam);
  std::span<const toolkit::Command> Commands() const override;
  void tbAlert_Click();
  void tbChat_Click();
  void tbBlock_Click();
  void mnuChatAll_Click();
  void mnuSndAll_Click();
  void mnuAbout_Click() { commands_.showAbout(); }
  void mnuWp_Click(unsigned link);
  void mnuStat_Click(unsigned state);
  void mnuOpts_Click() { commands_.showOptions(); }
  void mnuClose_Click() { commands_.shutDown(); }
  void mnuStatBar_Click();
  void mnuMoveSub_Click(unsigned corner);
  void mnuPop_PopUp();
  void tmrMnu_Timer();
  void SetUpTray();
  void ShowMenuState();
  void ShowStateIcon();
  void ShowStatus();
  void ShowRoster();
  void OnEnter();
  void Hide();

  UserRoster& users_;
  net::Messenger& messenger_;
  MainCommands commands_;

  toolkit::Toolbar TB;
  HWND lblStat = nullptr;
  toolkit::RowsView lvUsers;
  toolkit::TrayIcon TI;
  toolkit::AdaptiveTimer tmrMnu;
  toolkit::WindowMenu menu_{kMainMenu, toolkit::MenuKind::Bar};
  bool hasContents_ = false;
  bool statBarVisible_ = true;
  bool stayHidden_ = false;
  bool statusStale_ = true;
  bool selectionSeen_ = true;
  bool visibleSeen_ = true;
  DWORD listShown_ = 0;  // tick count of the last update of the list
};

}  // namespace mainwindow
