// A chat window: one conversation and its participants. Any number may be open.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "core/roster.h"
#include "net/conversations.h"
#include "net/messenger.h"
#include "ui/conversation/chat_menu.h"
#include "ui/conversation/chat_text.h"
#include "ui/conversation/participants.h"
#include "ui/conversation/splitter_bar.h"
#include "ui/conversation/users_menu.h"
#include "ui/toolkit/menu/window_menu.h"
#include "ui/toolkit/rows_view.h"
#include "ui/toolkit/status_line.h"
#include "ui/toolkit/toolbar.h"
#include "ui/toolkit/window.h"

namespace conversation {

// The main window's list, for chat windows: the users on offer, and those selected.
struct MainList {
  const toolkit::ListRows& lvUsers;
  std::function<std::string()> selectedRecipients;  // names, each followed by a bar
};

class FrmChat : public toolkit::Window, public net::ChatWindow {
 public:
  FrmChat(const core::Roster& roster, const MainList& mainList, net::Messenger& messenger);

  // Creates the window, hidden, with its participants (names separated by bars). Throws core::Err::OutOfMemory when the
  // window cannot be created.
  void Make(std::string_view participants);

  // Prepares it to be shown. Runs pending events, so it must be registered for lines before.
  void Load();

  // Shows it on request of the user: in front, with the focus in the input line.
  void ShowForTyping();

  // Shows it for an incoming line, without taking the focus.
  void ShowForReading();

  bool AddMsg(std::string_view text, std::string_view sender, std::int32_t colour) override;
  void RemoveUser(std::string_view name) override;
  void RefUserList() override;
  void RefListOfUsers() override;

  void AddUser(std::string_view name);
  bool IsUserPresent(std::string_view name) const { return participants_.IsUserPresent(name); }

  // Stores the window's place, unless it is minimised, as the place of the next chat window.
  void SavePos() const;

  void SetLan() override;

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool Translate(MSG& message) override;
  bool TranslateInText(const MSG& key);
  void CreateControls();
  void MoveToSharedPlace();
  void LayOut() override;
  void MoveBar(toolkit::Twips way);
  toolkit::Twips BarTop(toolkit::Twips wanted) const;
  void UsersChanged();
  void UpdateStat();
  void Flash();
  bool DeclinesKeyboard(LPARAM lParam) const;
  void WheelTurned(WPARAM wParam, LPARAM lParam);
  LRESULT OnNotify(LPARAM lParam);
  void Send();
  void Close();

  // frm_chat_menus.cpp
  void MenuOpens(HMENU menu);
  std::span<const toolkit::Command> Commands() const override;
  void mnuExportT_Click();
  void mnuExportC_Click();
  void mnuCLS_Click();
  void mnuOnTop_Click();
  void mnuViewStat_Click();
  void mnuTime_Click();
  void mnuAdd_Click();
  void mnuUser_Click(unsigned index);
  void mnuRemove_Click();

  const MainList& mainList_;
  net::Messenger& messenger_;
  Participants participants_;
  UsersOnline lstUsers;
  bool usersOnlineStale_ = true;

  toolkit::RowsView lvUsers;
  SplitterBar imgSep;
  ChatText txtMsg;
  HWND txtSnd = nullptr, cmdDSnd = nullptr, lblStat = nullptr;
  toolkit::Toolbar tbSnd;
  toolkit::StatusLine status_;
  toolkit::Twips barTop_;
  bool statVisible_ = true, onTop_ = false, addTime_ = false;
  bool flashing_ = false, wheelTurning_ = false;
  ULONGLONG shownAt_ = 0;  // for reading, milliseconds since the system started; 0 = never

  toolkit::WindowMenu menu_{kChatMenu, toolkit::MenuKind::Bar};
  UsersMenu mnuUser_{menu_};
};

}  // namespace conversation
