// The partner's chats and alerts, in place of windows: shows incoming messages and sends the answers.
#pragma once

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "net/conversations.h"
#include "net/messenger.h"

namespace demo {

using Clock = std::chrono::steady_clock;

struct AnswerOptions {
  bool answersChats = false;
  bool toEverybody = false;               // whether answers to chat lines go to everybody
  std::chrono::milliseconds delay{1500};  // until a message is answered
};

class PartnerWindows : public net::Conversations {
 public:
  PartnerWindows(net::Messenger& messenger, AnswerOptions answers) : messenger_(messenger), answers_(answers) {}

  const std::vector<std::shared_ptr<net::ChatWindow>>& ChatWindows() const override { return windows_; }
  std::shared_ptr<net::ChatWindow> OpenChat(std::string_view participants) override;
  void ShowAlert(std::string_view text, std::string_view sender, int iconKind) override;

  // Schedules an alert from the partner to one user or to everybody.
  void SendAlertLater(std::chrono::milliseconds delay, std::string_view text, std::string_view to);

  // Sends the messages that are due. Returns the time until the next one is, at most a second.
  std::chrono::milliseconds SendDue();

 private:
  friend class PartnerChat;
  void AnswerLine(std::string_view text, std::string_view sender);
  void Answer(char mark, std::string_view text, std::string_view sender, std::string_view to);
  void SendLater(std::chrono::milliseconds delay, std::string message, std::string_view to);

  struct Outgoing {
    std::string message, to;
  };

  net::Messenger& messenger_;
  AnswerOptions answers_;
  std::vector<std::shared_ptr<net::ChatWindow>> windows_;
  std::multimap<Clock::time_point, Outgoing> outgoing_;
};

}  // namespace demo
