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
#include "ui/toolkit/menu/window_menu.h"
#include "ui/toolkit/rows_view.h"
#include "ui/toolkit/status_line.h"
#include "ui/toolkit/toolbar.h"
#include "ui/toolkit/window.h"

namespace conversation {

// The main window's list as chat windows use it: the users that can be added, and the selected ones.
struct MainList {
  const toolkit::ListRows& lvUsers;
  std::function<std::string()> selectedRecipients;  // names, each followed by a bar
};

class FrmChat : public toolkit::Window, public net::ChatWindow {
 public:
  FrmChat(const core::Roster& roster, const MainList& mainList, net::Messenger& messenger);

  // Creates the window, hidden, with its participants (names separated by bars). Throws core::Err::OutOfMemory when it
  // cannot be created.
  void Make(std::string_view participants);

  // Prepares it to be shown. Runs pending events, so it must be registered to receive lines first.
  void Load();

  // Shows it at the user's request: in front, with the focus in the input line.
  void ShowForTyping();

  // Shows it for an incoming line, without taking the focus.
  void ShowForReading();

  bool AddMsg(std::string_view text, std::string_view sender, std::int32_t colour) override;
  void RemoveUser(std::string_view name) override;
  void RefUserList() override;
  void RefListOfUsers() override;

  void AddUser(std::string_view name);
  bool IsUserPresent(std::string_view name) const { return participants_.IsUserPresent(name); }

  // Stores the window's position and size, unless it is minimised, for the next chat window.
  void SavePos() const;

  void SetLan() override;

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool Translate(MSG& message) override;
  bool TranslateInText(const MSG& key);
  void CreateControls();
  void MoveToSavedPos();
  void LayOut() override;
  void MoveBar(toolkit::Twips distance);
  toolkit::Twips BarTop(toolkit::Twips wanted) const;
  void UsersChanged();
  void UpdateStat();
  void Flash();
  bool IgnoresActivation(LPARAM lParam) const;
  void OnWheel(WPARAM wParam, LPARAM lParam);
  LRESULT OnNotify(LPARAM lParam);
  void Send();
  void Close();

  // frm_chat_menus.cpp
  void OnMenuOpening(HMENU menu);
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
  bool flashing_ = false, forwardingWheel_ = false;
  ULONGLONG shownAt_ = 0;  // by ShowForReading, as GetTickCount64 counts; 0 = never

  toolkit::WindowMenu menu_{kChatMenu, toolkit::MenuKind::Bar};
  UsersMenu mnuUser_{menu_};
};

}  // namespace conversation
