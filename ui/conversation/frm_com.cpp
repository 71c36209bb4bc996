#include "ui/conversation/frm_com.h"

#include "core/event_loop.h"
#include "core/log.h"
#include "core/scoped_flag.h"
#include "core/text.h"
#include "net/packet.h"
#include "res/pictures.h"
#include "ui/conversation/window_layout.h"
#include "ui/toolkit/controls.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/screen.h"
#include "ui/toolkit/toolbar.h"

namespace conversation {
namespace {

using toolkit::Px;

enum CommandId : unsigned { tbSend = 101, tbClose };

constexpr toolkit::ToolButton kComposerButtons[] = {
    {tbSend, {4004, "&Send"}, res::kToolbarSend},
    {tbClose, {4005, "&Close"}, res::kToolbarClose},
};

constexpr DWORD kListStyle = LVS_REPORT | LVS_OWNERDATA | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER | WS_TABSTOP;
constexpr DWORD kTextStyle = ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL | WS_VSCROLL | WS_TABSTOP;

}  // namespace

void FrmCom::Load() {
  Create({.className = "frmCom"}, {4001, "Send Message - Quillon"},
         toolkit::CentredIn(toolkit::WorkAreaPixels(), Px(kComposerWidth), Px(kComposerHeight)));
  SetMinSize(kComposerMinWidth, kComposerMinHeight);
  CreateControls();
  SetLan();
  core::RunPendingEvents();
  LayOut();
}

void FrmCom::CreateControls() {
  AddToolbar(TB, kComposerButtons);
  lblCap[0] = AddControl("STATIC", {4002, "To"}, SS_LEFTNOWORDWRAP | SS_NOPREFIX);
  const HWND list = AddControl(WC_LISTVIEWA, "", kListStyle, WS_EX_CLIENTEDGE);
  lvUsers.Attach(list, recipients_.Rows(), toolkit::SharedPictures(res::Strip::Roster));
  lvUsers.AddColumn(0, "User", 0);
  lblCap[1] = AddControl("STATIC", {4003, "Message"}, SS_LEFTNOWORDWRAP | SS_NOPREFIX);
  txtMsg = AddControl("EDIT", "", kTextStyle, WS_EX_CLIENTEDGE);
  toolkit::LimitBytes(txtMsg, net::kMaxText);
  toolkit::KeepSelectionAtTab(txtMsg);
  FocusFirst(txtMsg);
}

void FrmCom::LayOut() {
  const Area client = toolkit::ClientAreaOf(hwnd());
  const int line = toolkit::LineHeight();
  const int top = TB.Place(client.right);
  const ComposerParts parts = ComposerLayout(client.right, client.bottom, top, line, toolkit::ScreenDpi());
  toolkit::SetArea(lblCap[0], parts.toLabel);
  toolkit::SetArea(lblCap[1], parts.messageLabel);
  toolkit::SetArea(lvUsers.hwnd(), parts.recipients);
  toolkit::SetArea(txtMsg, parts.text);
  lvUsers.FitColumn();
}

void FrmCom::RowsChanged() {
  lvUsers.Sync();
  lvUsers.FitColumn();
}

void FrmCom::AddRecipient(std::string_view name) {
  recipients_.AddRecipient(name);
  RowsChanged();
}

void FrmCom::AddRecipients(std::string_view list) {
  recipients_.AddRecipients(list);
  RowsChanged();
}

void FrmCom::RefreshRows() {
  recipients_.RefreshRows();
  RowsChanged();
}

void FrmCom::ShowForTyping() {
  Raise();
  ::SetFocus(txtMsg);
}

LRESULT FrmCom::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SIZE:
      if (txtMsg && wParam != SIZE_MINIMIZED) LayOut();
      return 0;
    case WM_NOTIFY: {
      LRESULT result = 0;
      if (lvUsers.Notify(*reinterpret_cast<const NMHDR*>(lParam), lParam, result)) return result;
      break;
    }
    default:
      break;
  }
  return Window::Handle(message, wParam, lParam);
}

bool FrmCom::Translate(MSG& message) {
  if (message.message == WM_KEYDOWN && message.hwnd == txtMsg && toolkit::TranslateTextKey(message)) return true;
  return Window::Translate(message);
}

std::span<const toolkit::Command> FrmCom::Commands() const {
  static const toolkit::Command kCommands[] = {{tbSend, &FrmCom::Send}, {tbClose, &FrmCom::Close}};
  return kCommands;
}

// Events run between sending and closing, such as a second click. After an exception the user may send again.
void FrmCom::Send() {
  const std::string text = toolkit::TextOf(txtMsg);
  if (sending_ || core::Trim(text).empty()) return;
  const core::ScopedFlag sending(sending_);
  if (recipients_.IsEverybody())
    SendToAll(text);
  else
    SendToEach(text);
  core::RunPendingEvents();
  if (hwnd()) ::DestroyWindow(hwnd());
}

void FrmCom::SendToAll(const std::string& text) {
  messenger_.SendMsg(net::kAlertMark + text);
  core::WriteLog("alert sent to all");
}

void FrmCom::SendToEach(const std::string& text) {
  const toolkit::ListRows& rows = recipients_.Rows();
  for (std::size_t i = 0; i < rows.Count(); ++i) {
    const std::string& name = rows.At(i).text;
    messenger_.SendPrivate(name + ' ' + net::kAlertMark + text);
    core::WriteLog("Private alert sent to " + name);
  }
}

}  // namespace conversation
