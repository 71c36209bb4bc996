// The windows of conversations that are open: the composer, the alert popups, the chat windows. They live as long as
// the user keeps them; what is still open here goes with this object.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "core/roster.h"
#include "net/conversations.h"
#include "net/messenger.h"
#include "ui/conversation/alert_queue.h"
#include "ui/conversation/frm_chat.h"
#include "ui/conversation/frm_com.h"
#include "ui/conversation/frm_pop.h"

namespace conversation {

class OpenWindows : public net::Conversations {
 public:
  // Limit on chat windows opened by incoming lines; lines of further senders are dropped, and noted in the log. Each
  // window costs some ten of the 10,000 objects that the system grants a program, and nobody keeps so many
  // conversations apart.
  static constexpr std::size_t kMaxChats = 100;

  OpenWindows(core::Roster& roster, MainList mainList, net::Messenger& messenger);

  // Names parted by bars. Opens the composer, or adds to the one that is open; in front, with the keyboard. A list that
  // names nobody does nothing, and gives false.
  bool OpenComposer(std::string_view recipients);

  // Names parted by bars, or none. Opens a chat window in front, with the keyboard.
  std::shared_ptr<FrmChat> StartChat(std::string_view participants);

  const std::vector<std::shared_ptr<net::ChatWindow>>& ChatWindows() const override { return chats_; }

  // The window appears without taking the keyboard. Null when there are too many.
  std::shared_ptr<net::ChatWindow> OpenChat(std::string_view participants) override;
  void ShowAlert(std::string_view text, std::string_view sender, int iconKind) override;

 private:
  std::shared_ptr<FrmCom> Composer();
  PopupCommands Commands();
  void ShowWaitingAlerts();
  void ShowPopup(Alert alert);
  void PopupClosed(const FrmPop* popup);
  bool StartLiveChat(const Alert& alert);
  std::shared_ptr<FrmChat> NewChat(std::string_view participants);
  void BlockSender(const std::string& sender);

  core::Roster& roster_;
  const MainList mainList_;
  net::Messenger& messenger_;
  AlertQueue alerts_;
  std::vector<std::shared_ptr<FrmPop>> popups_;
  std::shared_ptr<FrmCom> composer_;
  std::vector<std::shared_ptr<net::ChatWindow>> chats_;  // each a FrmChat
};

}  // namespace conversation
