#include "ui/conversation/open_windows.h"

#include <string>
#include <utility>

#include "core/message_box.h"

namespace conversation {

OpenWindows::OpenWindows(core::Roster& roster, MainList mainList, net::Messenger& messenger)
    : roster_(roster), mainList_(std::move(mainList)), messenger_(messenger) {}

bool OpenWindows::OpenComposer(std::string_view recipients) {
  if (!NamesAnybody(recipients)) return false;
  const std::shared_ptr<FrmCom> composer = Composer();
  composer->AddRecipients(recipients);
  composer->ShowForTyping();
  return true;
}

// A composer that is sending counts as closed.
std::shared_ptr<FrmCom> OpenWindows::Composer() {
  if (composer_ && !composer_->Sending()) return composer_;
  const auto opened = std::make_shared<FrmCom>(roster_, messenger_);
  opened->onDestroyed = [this, closed = opened.get()] {
    if (composer_.get() == closed) composer_.reset();
  };
  composer_ = opened;
  try {
    opened->Load();
  } catch (...) {
    composer_.reset();  // otherwise it would block all later ones
    throw;
  }
  return opened;
}

std::shared_ptr<FrmChat> OpenWindows::StartChat(std::string_view participants) {
  auto chat = NewChat(participants);
  if (chat->hwnd()) chat->ShowForTyping();
  return chat;
}

std::shared_ptr<net::ChatWindow> OpenWindows::OpenChat(std::string_view participants) {
  if (chats_.size() >= kMaxChats) return nullptr;
  auto chat = NewChat(participants);
  if (chat->hwnd()) chat->ShowForReading();
  return chat;
}

// Registered before it runs events, so that lines that arrive then find it.
std::shared_ptr<FrmChat> OpenWindows::NewChat(std::string_view participants) {
  auto chat = std::make_shared<FrmChat>(roster_, mainList_, messenger_);
  chat->onDestroyed = [this, closed = chat.get()] {
    std::erase_if(chats_, [closed](const auto& open) { return open.get() == closed; });
  };
  chat->Make(participants);
  chats_.push_back(chat);
  try {
    chat->Load();
  } catch (...) {
    ::DestroyWindow(chat->hwnd());
    throw;
  }
  return chat;
}

void OpenWindows::ShowAlert(std::string_view text, std::string_view sender, int iconKind) {
  alerts_.Add({std::string(text), std::string(sender), iconKind});
  ShowWaitingAlerts();
}

void OpenWindows::ShowWaitingAlerts() {
  while (auto alert = alerts_.Next(popups_.size())) ShowPopup(std::move(*alert));
}

// When no window can be created, the text is posted as a message box.
void OpenWindows::ShowPopup(Alert alert) {
  const std::int32_t colour = roster_.GetColorForUName(alert.sender);
  const auto popup = std::make_shared<FrmPop>(alert, colour, Commands());
  try {
    popup->Open();
  } catch (...) {
    core::PostBox({.text = std::move(alert.text), .title = std::move(alert.sender)});
    throw;
  }
  popup->onDestroyed = [this, closed = popup.get()] {
    PopupClosed(closed);
  };  // not raised by a popup that failed to open
  popups_.push_back(popup);
}

void OpenWindows::PopupClosed(const FrmPop* popup) {
  std::erase_if(popups_, [&](const auto& open) { return open.get() == popup; });
  ShowWaitingAlerts();
}

PopupCommands OpenWindows::Commands() {
  return {.openComposer = [this](const std::string& recipients) { return OpenComposer(recipients); },
          .startLiveChat = [this](const Alert& alert) { return StartLiveChat(alert); },
          .blockSender = [this](const std::string& sender) { BlockSender(sender); }};
}

// Opening runs events, and the window refuses the text of a sender who leaves then.
bool OpenWindows::StartLiveChat(const Alert& alert) {
  const auto chat = StartChat(alert.sender + '|');
  chat->AddUser(alert.sender);
  return chat->AddMsg(alert.text, alert.sender, roster_.GetColorForUName(alert.sender));
}

void OpenWindows::BlockSender(const std::string& sender) {
  roster_.AddBlocked(sender);
  alerts_.Forget(sender);
  if (composer_) composer_->RefreshRows();
}

}  // namespace conversation
