// Owns the open windows of conversations: the composer, the alert popups, and the chat windows. Those still open are
// destroyed with this object.
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
  // Limit on chat windows opened by incoming lines; lines of further senders are dropped and logged. Each window
  // uses some ten of the 10,000 objects that the system allows a process.
  static constexpr std::size_t kMaxChats = 100;

  OpenWindows(core::Roster& roster, MainList mainList, net::Messenger& messenger);

  // Opens the composer, or adds to the open one, in front and with the focus. Names are separated by bars. Does nothing
  // and returns false when there are none.
  bool OpenComposer(std::string_view recipients);

  // Opens a chat window in front, with the focus. Names are separated by bars; there may be none.
  std::shared_ptr<FrmChat> StartChat(std::string_view participants);

  const std::vector<std::shared_ptr<net::ChatWindow>>& ChatWindows() const override { return chats_; }

  // Opens a chat window without taking the focus. Null when there are too many.
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
