// The windows of conversations that are open: the composer, the alert popups, the chat windows. They live as long as
// the user keeps them; what is still open here goes with this object.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "core/roster.h"
#include "net/conversations.h"
#include "net/messenger.h"
#include "ui/conversation/alert_line.h"
#include "ui/conversation/frm_com.h"
#include "ui/conversation/frm_pop.h"

namespace conversation {

class OpenWindows : public net::Conversations {
 public:
  OpenWindows(core::Roster& roster, net::Messenger& messenger) : roster_(roster), messenger_(messenger) {}

  // Names parted by bars. Opens the composer, or adds to the one that is open; in front, with the keyboard. A list that
  // names nobody does nothing.
  void OpenComposer(std::string_view recipients);

  const std::vector<std::shared_ptr<net::ChatWindow>>& ChatWindows() const override { return chats_; }
  std::shared_ptr<net::ChatWindow> OpenChat(std::string_view participants) override;
  void ShowAlert(std::string_view text, std::string_view sender, int iconKind) override;

  // The captions of all open windows anew, after a change of the language.
  void SetLan();

 private:
  std::shared_ptr<FrmCom> Composer();
  PopupCommands Commands();
  void ShowWaitingAlerts();
  void ShowPopup(Alert alert);
  void PopupClosed(const FrmPop* popup);
  bool StartLiveChat(const Alert& alert);
  void BlockSender(const std::string& sender);

  core::Roster& roster_;
  net::Messenger& messenger_;
  AlertLine alerts_;
  std::vector<std::shared_ptr<FrmPop>> popups_;
  std::shared_ptr<FrmCom> composer_;
  std::vector<std::shared_ptr<net::ChatWindow>> chats_;  // stays empty until OpenChat opens one
};

}  // namespace conversation
