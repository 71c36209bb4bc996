#include "ui/conversation/frm_chat.h"

#include "core/clock.h"
#include "core/event_loop.h"
#include "core/globals.h"
#include "core/scoped_flag.h"
#include "core/text.h"
#include "net/packet.h"
#include "ui/conversation/window_layout.h"
#include "ui/toolkit/controls.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/screen.h"
#include "ui/toolkit/toolbar.h"

namespace conversation {
namespace {

using toolkit::Px;
using toolkit::Tw;
using toolkit::Twips;
using toolkit::operator""_dp;

constexpr toolkit::ToolButton kChatButtons[] = {{chatmenu::tbSend, {3002, "&Send"}, res::kToolbarSend}};

constexpr Twips kBarStep{240};  // about a row; for Ctrl+Up and Ctrl+Down

constexpr ULONGLONG kIgnoreActivation = 500;  // milliseconds

constexpr DWORD kListStyle =
    LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_NOCOLUMNHEADER | WS_TABSTOP | WS_CLIPSIBLINGS;
constexpr DWORD kTypedStyle = ES_MULTILINE | ES_AUTOVSCROLL | WS_TABSTOP;
constexpr DWORD kStatStyle = SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_CENTERIMAGE | SS_ENDELLIPSIS;

}  // namespace

FrmChat::FrmChat(const core::Roster& roster, const MainList& mainList, net::Messenger& messenger)
    : mainList_(mainList), messenger_(messenger), participants_(roster, mainList.lvUsers), barTop_(kFirstBarTop) {}

void FrmChat::Make(std::string_view participants) {
  Create({.className = "frmChat"}, {3001, "Chating - Quillon"}, {});
  SetMinSize(kChatMinWidth, kChatMinHeight);
  CreateControls();
  AddMenu(menu_);
  menu_.Check(chatmenu::mnuViewStat, statVisible_);
  participants_.AddUsers(participants);
}

void FrmChat::Load() {
  SetLan();
  core::RunPendingEvents();
  if (!hwnd()) return;
  MoveToSavedPos();
  UsersChanged();
  LayOut();
  menu_.menuHelp = [this](const std::string& text) { status_.ShowHelp(text); };
  menu_.DrawItems();
}

// In tab order.
void FrmChat::CreateControls() {
  AddName({3112, "&Users"});
  lvUsers.Attach(AddControl(WC_LISTVIEWA, "", kListStyle, WS_EX_CLIENTEDGE), participants_.Rows(),
                 toolkit::SharedPictures(res::Strip::Roster));
  lvUsers.AddColumn(0, "User", 0);
  AddName({3003, "Conversation"});
  txtMsg.Create(hwnd());
  txtMsg.replaced = [this](HWND before, HWND now) { ControlReplaced(before, now); };
  AddName({4003, "Message"});
  txtSnd = AddControl("EDIT", "", kTypedStyle, WS_EX_CLIENTEDGE);
  toolkit::LimitBytes(txtSnd, net::kMaxText);
  toolkit::KeepSelectionAtTab(txtSnd);
  FocusFirst(txtSnd);
  AddToolbar(tbSnd, kChatButtons);
  cmdDSnd = AddControl("BUTTON", kChatButtons[0].caption, BS_DEFPUSHBUTTON, 0, IDOK);
  ::SetWindowPos(cmdDSnd, nullptr, 0, 0, Px(10_dp), Px(10_dp), SWP_HIDEWINDOW | SWP_NOZORDER | SWP_NOACTIVATE);
  lblStat = AddControl("STATIC", "<STAT>", kStatStyle);
  status_.captionChanged = [this](const std::string& caption) { ::SetWindowTextA(lblStat, caption.c_str()); };
  imgSep.Create(hwnd());
  imgSep.within = [this](Twips top) { return BarTop(top); };
  imgSep.moved = [this](Twips top) { MoveBar(top - BarTop(barTop_)); };
}

void FrmChat::SetLan() {
  Window::SetLan();
  UpdateStat();
}

void FrmChat::MoveToSavedPos() {
  const core::WindowBounds saved{core::gChatLeft, core::gChatTop, core::gChatWidth, core::gChatHeight};
  toolkit::SetArea(hwnd(), toolkit::Reachable(toolkit::AreaOf(saved)));
}

void FrmChat::SavePos() const {
  if (::IsIconic(hwnd())) return;
  const core::WindowBounds bounds = toolkit::BoundsOf(hwnd());
  core::gChatLeft = bounds.left;
  core::gChatTop = bounds.top;
  core::gChatWidth = bounds.width;
  core::gChatHeight = bounds.height;
}

Twips FrmChat::BarTop(Twips wanted) const { return BarTopWithin(wanted, Tw(toolkit::AreaOf(hwnd()).Height())); }

void FrmChat::MoveBar(Twips distance) {
  barTop_ = BarTop(BarTop(barTop_) + distance);
  LayOut();
}

void FrmChat::LayOut() {
  const Area client = toolkit::ClientAreaOf(hwnd());
  const int sendHeight = tbSnd.Place(client.right);
  const ChatParts parts = ChatLayout({.width = client.right,
                                      .height = client.bottom,
                                      .barTop = Px(BarTop(barTop_)),
                                      .sendWidth = tbSnd.ButtonsSize().cx,
                                      .sendHeight = sendHeight,
                                      .status = statVisible_},
                                     toolkit::ScreenDpi());
  toolkit::SetArea(lvUsers.hwnd(), parts.users);
  imgSep.Place(parts.bar);
  txtMsg.MoveTo(parts.conversation);
  toolkit::SetArea(txtSnd, parts.typed);
  toolkit::SetArea(tbSnd.hwnd(), parts.send);
  toolkit::SetArea(lblStat, parts.status);
  ::ShowWindow(lblStat, statVisible_ ? SW_SHOWNA : SW_HIDE);
  lvUsers.FitColumn();
}

void FrmChat::ShowForTyping() {
  Raise();
  ::SetFocus(txtSnd);
}

void FrmChat::ShowForReading() {
  shownAt_ = ::GetTickCount64();
  Show(SW_SHOWNOACTIVATE);
  Flash();
}

// Some X11 window managers give the focus to every new window, and Wine reports that as a click on its menu. A click
// so soon after the window was shown is not the user's.
bool FrmChat::IgnoresActivation(LPARAM lParam) const {
  return LOWORD(lParam) == HTMENU && shownAt_ != 0 && ::GetTickCount64() - shownAt_ < kIgnoreActivation;
}

bool FrmChat::AddMsg(std::string_view text, std::string_view sender, std::int32_t colour) {
  if (!hwnd()) return false;
  const std::string prefix = addTime_ ? core::TimeText() + ' ' : std::string();
  if (!participants_.Takes(sender)) return false;
  txtMsg.Append(prefix, sender, text, colour);
  Flash();
  return true;
}

// Flashes once until the window is activated.
void FrmChat::Flash() {
  if (flashing_ || ::GetActiveWindow() == hwnd() || !::IsWindowVisible(hwnd())) return;
  flashing_ = true;
  FLASHWINFO flash{sizeof flash, hwnd(), FLASHW_TRAY | FLASHW_TIMERNOFG, 0, 0};
  ::FlashWindowEx(&flash);
}

void FrmChat::AddUser(std::string_view name) {
  if (!hwnd()) return;
  participants_.AddUser(name);
  UsersChanged();
}

void FrmChat::RemoveUser(std::string_view name) {
  if (!hwnd() || !participants_.IsUserPresent(name)) return;
  participants_.RemoveUser(name);
  UsersChanged();
}

void FrmChat::UsersChanged() {
  lvUsers.Sync();
  UpdateStat();
}

void FrmChat::RefUserList() {
  if (!hwnd()) return;
  participants_.RefUserList();
  lvUsers.Sync();
}

// Rebuilding the menu for every change would be wasted while it is closed, so it is rebuilt when it opens.
void FrmChat::RefListOfUsers() { usersOnlineStale_ = true; }

void FrmChat::UpdateStat() { status_.SetCounts(participants_.CountsText()); }

LRESULT FrmChat::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  if (imgSep.Handle(message, wParam, lParam)) return message == WM_SETCURSOR ? TRUE : 0;
  switch (message) {
    case WM_SIZE:
      if (menu_.handle() && wParam != SIZE_MINIMIZED) LayOut();
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(wParam) != WA_INACTIVE) flashing_ = false;
      break;
    case WM_MOUSEACTIVATE:
      if (IgnoresActivation(lParam)) return MA_NOACTIVATE;
      break;
    case WM_MOUSEWHEEL:
      OnWheel(wParam, lParam);
      return 0;
    case WM_INITMENUPOPUP:
      OnMenuOpening(reinterpret_cast<HMENU>(wParam));
      break;
    case WM_TIMER:
      txtMsg.OnTimer(wParam);
      return 0;
    case WM_COMMAND:
      if (reinterpret_cast<HWND>(lParam) == txtMsg.hwnd()) return txtMsg.OnScroll(), 0;
      if (reinterpret_cast<HWND>(lParam) == txtSnd && HIWORD(wParam) == EN_CHANGE) txtMsg.OnTyping();
      break;
    case WM_NOTIFY:
      return OnNotify(lParam);
    case WM_CLOSE:
      Close();
      return 0;
    default:
      break;
  }
  return Window::Handle(message, wParam, lParam);
}

bool FrmChat::Translate(MSG& message) {
  const bool inText = message.hwnd == txtMsg.hwnd() || message.hwnd == txtSnd;
  if (inText && message.message == WM_KEYDOWN && TranslateInText(message)) return true;
  return Window::Translate(message);
}

// In addition to the keys of every text box: Enter, which the edit control would consume, sends. Page Up and Page Down
// in the input line scroll the conversation.
bool FrmChat::TranslateInText(const MSG& key) {
  switch (key.wParam) {
    case VK_RETURN:
      Send();
      return true;
    case VK_PRIOR:
    case VK_NEXT:
      if (key.hwnd != txtSnd) return false;
      txtMsg.ScrollPage(key.wParam == VK_PRIOR ? SB_PAGEUP : SB_PAGEDOWN);
      return true;
    case VK_HOME:
    case VK_END:
      if (key.hwnd != txtMsg.hwnd() || !toolkit::KeyDown(VK_CONTROL)) return false;
      if (toolkit::KeyDown(VK_SHIFT)) return false;
      return key.wParam == VK_HOME ? txtMsg.GoToBeginning() : txtMsg.GoToEnd();
    case VK_UP:
    case VK_DOWN:
      if (!toolkit::KeyDown(VK_CONTROL)) return false;
      MoveBar(key.wParam == VK_UP ? Twips{} - kBarStep : kBarStep);
      return true;
    default:
      return toolkit::TranslateTextKey(key);
  }
}

// Forwards the wheel to the conversation. The control sends a message that it does not handle (nothing to scroll, Shift
// held) back to its parent; forwarding that one again would never end.
void FrmChat::OnWheel(WPARAM wParam, LPARAM lParam) {
  if (forwardingWheel_) return;
  const core::ScopedFlag forwarding(forwardingWheel_);
  ::SendMessageA(txtMsg.hwnd(), WM_MOUSEWHEEL, wParam, lParam);
}

LRESULT FrmChat::OnNotify(LPARAM lParam) {
  const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
  const bool listKey = header.hwndFrom == lvUsers.hwnd() && header.code == LVN_KEYDOWN;
  if (listKey && reinterpret_cast<const NMLVKEYDOWN*>(lParam)->wVKey == VK_DELETE) mnuRemove_Click();
  LRESULT result = 0;
  lvUsers.Notify(header, lParam, result);
  return result;
}

void FrmChat::Send() {
  const std::string line = toolkit::TextOf(txtSnd);
  if (core::Trim(line).empty()) return;
  participants_.Send(line, messenger_);
  ::SetWindowTextA(txtSnd, "");
  ::SetFocus(txtSnd);
}

void FrmChat::Close() {
  SavePos();
  ::DestroyWindow(hwnd());
}

}  // namespace conversation
