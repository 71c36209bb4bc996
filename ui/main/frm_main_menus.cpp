// The main window's menus, toolbar and notification icon: what each command does.
#include "core/globals.h"
#include "core/process.h"
#include "ui/main/frm_main.h"
#include "ui/main/main_layout.h"
#include "ui/main/main_menu.h"
#include "ui/toolkit/links.h"
#include "ui/toolkit/modal.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/roster_rows.h"
#include "ui/toolkit/screen.h"

namespace mainwindow {
void FrmMain::SetUpMenus() {
  AddMenu(menu_);
  menu_.menuHelp = [this](const std::string& text) { HelpObj_MenuHelp(text); };
  menu_.DrawItems();
  menu_.Check(mnuStat, true);
  menu_.Check(mnuStatBar, true);
  ShowMenuState();
}

// The menu has either Show Main Window or Hide.
void FrmMain::ShowMenuState() {
  const bool visible = ::IsWindowVisible(hwnd()) != FALSE;
  if (visible == visibleSeen_) return;
  visibleSeen_ = visible;
  menu_.SetShown(mnuShowMe, !visible);
  menu_.SetShown(mnuHide, visible);
}

std::span<const toolkit::Command> FrmMain::Commands() const {
  static const toolkit::Command kCommands[] = {
      {IDOK, &FrmMain::OnEnter},
      {tbAlert, &FrmMain::tbAlert_Click},
      {tbChat, &FrmMain::tbChat_Click},
      {tbBlock, &FrmMain::tbBlock_Click},
      {mnuChatAll, &FrmMain::mnuChatAll_Click},
      {mnuSndAll, &FrmMain::mnuSndAll_Click},
      {mnuStat, kStates, &FrmMain::mnuStat_Click},
      {mnuOpts, &FrmMain::mnuOpts_Click},
      {mnuShowMe, &FrmMain::ShowMe},
      {mnuHide, &FrmMain::Hide},
      {mnuClose, &FrmMain::mnuClose_Click},
      {mnuStatBar, &FrmMain::mnuStatBar_Click},
      {mnuMoveSub, kCorners, &FrmMain::mnuMoveSub_Click},
      {mnuAbout, &FrmMain::mnuAbout_Click},
      {mnuWp, kLinks, &FrmMain::mnuWp_Click},
  };
  return kCommands;
}

void FrmMain::tbAlert_Click() { commands_.openComposer(users_.SelectedRecipients()); }

void FrmMain::tbChat_Click() { commands_.openChat(users_.SelectedRecipients()); }

void FrmMain::tbBlock_Click() { users_.ToggleBlock(); }

void FrmMain::mnuChatAll_Click() { commands_.openChat(toolkit::EverybodyList()); }

void FrmMain::mnuSndAll_Click() { commands_.openComposer(toolkit::EverybodyList()); }

// Dialog keys turn Enter into this command before the list can report it.
void FrmMain::OnEnter() {
  if (hasContents_ && ::GetFocus() == lvUsers.hwnd()) tbAlert_Click();
}

void FrmMain::mnuStat_Click(unsigned state) {
  for (unsigned i = 0; i < kStates; ++i) menu_.Check(mnuStat + i, i == state);
  core::gStatus = static_cast<std::int16_t>(state);
  ShowStateIcon();
  messenger_.SendState();
}

void FrmMain::mnuStatBar_Click() {
  statBarVisible_ = !statBarVisible_;
  menu_.Check(mnuStatBar, statBarVisible_);
  LayOut();
}

void FrmMain::mnuMoveSub_Click(unsigned corner) {
  Restore();
  toolkit::SetArea(hwnd(), CornerPlace(corner, toolkit::WorkAreaPixels(), toolkit::AreaOf(hwnd())));
}

void FrmMain::mnuWp_Click(unsigned link) { toolkit::OpenLink(kWebLinks[link]); }

void FrmMain::SetUpTray() {
  TI.SetToolTipText(core::kProgramName);
  TI.Refused = [this] { ShowMe(); };
  TI.ShowParent = [this] { ::IsWindowEnabled(hwnd()) ? ShowMe() : toolkit::RaiseModal(); };
  TI.ShowPopUpMenu = [this] { ::IsWindowEnabled(hwnd()) ? mnuPop_PopUp() : toolkit::RaiseModal(); };
  ShowStateIcon();
}

void FrmMain::ShowStateIcon() {
  const int side = ::GetSystemMetrics(SM_CXSMICON);
  TI.SetPicture(toolkit::LoadPicture(res::Strip::Tray, core::gStatus, side));
}

void FrmMain::ShowTray() {
  CreateContents();
  toolkit::LoadPictures();  // the icon's menu can be opened before any window is shown
  TI.Create();
  if (!TI.Active()) ShowMe();
}

// As documented for ::TrackPopupMenu with notification icons: the window must be in the foreground, so that the menu
// closes on a click elsewhere, and the empty message afterwards makes the next opening work.
void FrmMain::mnuPop_PopUp() {
  POINT pointer{};
  ::GetCursorPos(&pointer);
  ::SetForegroundWindow(hwnd());
  ::TrackPopupMenu(::GetSubMenu(menu_.handle(), 0), TPM_RIGHTBUTTON, pointer.x, pointer.y, 0, hwnd(), nullptr);
  ::PostMessageA(hwnd(), WM_NULL, 0, 0);
}

}  // namespace mainwindow
