#include "ui/main/frm_main.h"

#include <utility>

#include "core/globals.h"
#include "core/language.h"
#include "core/process.h"
#include "ui/main/main_layout.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/screen.h"
#include "ui/toolkit/toolbar.h"

namespace mainwindow {
namespace {

using toolkit::Px;
using toolkit::ToolButton;
using toolkit::Tw;
using toolkit::operator""_dp;

constexpr ToolButton kToolButtons[] = {
    {tbAlert, {1002, "&Alert"}, res::kToolbarAlert},
    {tbChat, {1003, "&Chat"}, res::kToolbarChat},
    {tbBlock, {1004, "&Block"}, res::kToolbarBlock},
};

constexpr UINT_PTR kTmrMnu = 1;
constexpr UINT kHideMinimised = WM_APP;
constexpr DWORD kRosterInterval = 50;  // milliseconds between two repaints of a busy roster

constexpr int kUName = 0, kStat = 1;
constexpr toolkit::Twips kStatusHeight = 20_dp, kStatusMargin = 4_dp, kToolMargin = 4_dp;

constexpr DWORD kRosterStyle =
    WS_TABSTOP | LVS_REPORT | LVS_OWNERDATA | LVS_NOCOLUMNHEADER | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS;

}  // namespace

FrmMain::FrmMain(UserRoster& users, net::Messenger& messenger, MainCommands commands)
    : users_(users), messenger_(messenger), commands_(std::move(commands)) {}

void FrmMain::Load() {
  Create({"frmMain", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN}, {1001, "Quillon"}, {0, 0, Px(200_dp), Px(320_dp)});
  SetMinSize(kMinWidth, kMinHeight);
  SetLan();
  SetUpInt();
}

void FrmMain::CreateContents() {
  if (hasContents_) return;
  hasContents_ = true;
  toolkit::LoadCommonControls();
  CreateControls();
  SetUpMenus();
  users_.UpdateStat();
  SetUpTray();
  LayOut();
  tmrMnu.Start(hwnd(), kTmrMnu);
}

void FrmMain::CreateControls() {
  AddToolbar(TB, kToolButtons);
  TB.Indent(Px(kToolMargin));
  // No border: the columns leave exactly the width of the scroll bar.
  AddName({3112, "&Users"});
  const HWND list = AddControl(WC_LISTVIEWA, "", kRosterStyle);
  lvUsers.Attach(list, users_.lvUsers, toolkit::SharedPictures(res::Strip::Roster));
  lvUsers.AddColumn(kUName, "", 0);
  lvUsers.AddColumn(kStat, "", 0);
  users_.lblStat.captionChanged = [this](const std::string&) { statusStale_ = true; };
  lblStat = AddControl("STATIC", "", SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_CENTERIMAGE | SS_ENDELLIPSIS);
  FocusFirst(list);
}

void FrmMain::SetLan() {
  const bool language = core::CaptionsFromTable();
  Window::SetLan();
  if (!language) return;
  core::LoadLangConsts();
  users_.UpdateStat();
}

void FrmMain::SetUpInt() {
  users_.ClearlvUsers();
  users_.RefGroups();
  users_.RefBlock();
}

void FrmMain::Move(const core::WindowBounds& bounds) { toolkit::SetArea(hwnd(), toolkit::AreaOf(bounds)); }

core::WindowBounds FrmMain::Restore() {
  if (::IsIconic(hwnd()) || ::IsZoomed(hwnd())) {
    const bool visible = ::IsWindowVisible(hwnd()) != FALSE;
    stayHidden_ = !visible;
    ::ShowWindow(hwnd(), SW_SHOWNOACTIVATE);
    stayHidden_ = false;
    if (!visible) Hide();
  }
  return toolkit::BoundsOf(hwnd());
}

// Every function that restores a window also shows it.
void FrmMain::KeepHidden(WINDOWPOS& change) const {
  if (stayHidden_) change.flags &= ~static_cast<UINT>(SWP_SHOWWINDOW);
}

void FrmMain::Wake() {
  if (::IsWindowVisible(hwnd())) tmrMnu.Wake();
}

void FrmMain::ShowMe() {
  CreateContents();
  lvUsers.Sync();
  Raise();
}

// Without an icon, a hidden window could not be shown again, so it stays on the task bar.
void FrmMain::Hide() {
  if (!TI.IsRefused()) return Show(SW_HIDE);
  if (!::IsIconic(hwnd())) Show(SW_MINIMIZE);
}

LRESULT FrmMain::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_TIMER) tmrMnu.Wake();
  switch (message) {
    case WM_SIZE:
      OnSize(wParam);
      return 0;
    case kHideMinimised:
      if (::IsIconic(hwnd())) Hide();
      return 0;
    case WM_WINDOWPOSCHANGING:
      KeepHidden(*reinterpret_cast<WINDOWPOS*>(lParam));
      break;
    case WM_NOTIFY:
      return OnNotify(lParam);
    case WM_TIMER:
      tmrMnu_Timer();
      return 0;
    case WM_CLOSE:
      commands_.shutDown();
      return 0;
    case WM_ENDSESSION:
      if (wParam) commands_.shutDown();
      return 0;
    default:
      break;
  }
  return Window::Handle(message, wParam, lParam);
}

// Minimising hides the window, since the program is in the notification area. Posted, because hiding it during
// minimising would lose its normal bounds.
void FrmMain::OnSize(WPARAM kind) {
  if (kind == SIZE_MINIMIZED)
    ::PostMessageA(hwnd(), kHideMinimised, 0, 0);
  else
    LayOut();
}

void FrmMain::LayOut() {
  if (!lblStat) return;  // during creation
  const toolkit::Area client = toolkit::ClientAreaOf(hwnd());
  const MainBands bands = BandsOf(client.bottom, TB.Place(client.right), Px(kStatusHeight), statBarVisible_);
  const int margin = Px(kStatusMargin);
  toolkit::SetArea(lvUsers.hwnd(), toolkit::AreaAt(0, bands.rosterTop, client.right, bands.rosterHeight));
  toolkit::SetArea(lblStat, {margin, bands.statusTop, client.right - margin, bands.statusTop + Px(kStatusHeight)});
  ::ShowWindow(lblStat, statBarVisible_ ? SW_SHOWNA : SW_HIDE);
  LayOutColumns(Tw(client.right));
}

void FrmMain::LayOutColumns(toolkit::Twips list) {
  const toolkit::Twips first = NameColumnWidth(list);
  const int second = Px(StatColumnWidth(list, first));
  ListView_SetColumnWidth(lvUsers.hwnd(), kUName, Px(first));
  ListView_SetColumnWidth(lvUsers.hwnd(), kStat, second > 0 ? second : 0);
}

LRESULT FrmMain::OnNotify(LPARAM lParam) {
  const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
  LRESULT result = 0;
  if (header.hwndFrom == lvUsers.hwnd() && header.code == NM_DBLCLK) tbAlert_Click();
  lvUsers.Notify(header, lParam, result);
  return result;
}

void FrmMain::tmrMnu_Timer() {
  tmrMnu.Ticked();
  ShowMenuState();
  const bool selected = users_.lvUsers.SelectedCount() > 0;
  if (selected != selectionSeen_) {
    selectionSeen_ = selected;
    for (const ToolButton& button : kToolButtons) TB.Enable(button.id, selected);
  }
  ShowRoster();
  ShowStatus();
}

void FrmMain::ShowRoster() {
  if (::GetTickCount() - listShown_ < kRosterInterval) return;
  listShown_ = ::GetTickCount();
  lvUsers.Sync();
}

// Updates the status line here, not on every packet, so that a flood causes no painting.
void FrmMain::ShowStatus() {
  if (!std::exchange(statusStale_, false)) return;
  ::SetWindowTextA(lblStat, users_.lblStat.Caption().c_str());
}

void FrmMain::HelpObj_MenuHelp(const std::string& text) { users_.lblStat.ShowHelp(text); }

}  // namespace mainwindow
