// The partner's end of a conversation: what the user of a copy would see and type.
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

struct Manners {
  bool answersChats = false;
  bool toEverybody = false;               // answers chat lines so that everybody reads it
  std::chrono::milliseconds delay{1500};  // between hearing and answering
};

class PartnerWindows : public net::Conversations {
 public:
  PartnerWindows(net::Messenger& messenger, Manners manners) : messenger_(messenger), manners_(manners) {}

  const std::vector<std::shared_ptr<net::ChatWindow>>& ChatWindows() const override { return windows_; }
  std::shared_ptr<net::ChatWindow> OpenChat(std::string_view participants) override;
  void ShowAlert(std::string_view text, std::string_view sender, int iconKind) override;

  // An alert of the partner's own, to one user or to everybody, some time from now.
  void SendAlertLater(std::chrono::milliseconds delay, std::string_view text, std::string_view to);

  // Sends what is due, and tells how long nothing else will be.
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
  Manners manners_;
  std::vector<std::shared_ptr<net::ChatWindow>> windows_;
  std::multimap<Clock::time_point, Outgoing> outgoing_;
};

}  // namespace demo
