#include "demo/partner_windows.h"

#include <algorithm>

#include "core/globals.h"
#include "core/text.h"
#include "demo/terminal.h"
#include "net/packet.h"

namespace demo {
namespace {

// Marks answers, which are not answered again: otherwise two partners would never stop.
constexpr std::string_view kAnswer = "Re: ";

constexpr std::string_view kEverybody = "(All)";
constexpr std::chrono::milliseconds kIdle{1000};

}  // namespace

// A chat with one user, opened by a line without a chat.
class PartnerChat : public net::ChatWindow {
 public:
  PartnerChat(PartnerWindows& windows, std::string user) : windows_(windows), user_(std::move(user)) {}

  bool AddMsg(std::string_view text, std::string_view sender, std::int32_t) override {
    if (!core::EqualIgnoringCase(sender, user_)) return false;
    Show("chat", std::string(sender).append(": ").append(text));
    if (windows_.answers_.answersChats) windows_.AnswerLine(text, sender);
    return true;
  }
  void RemoveUser(std::string_view) override {}
  void RefUserList() override {}
  void RefListOfUsers() override {}

 private:
  PartnerWindows& windows_;
  std::string user_;
};

std::shared_ptr<net::ChatWindow> PartnerWindows::OpenChat(std::string_view participants) {
  const auto names = core::BarFields(participants);
  return windows_.emplace_back(std::make_shared<PartnerChat>(*this, std::string(names.empty() ? "" : names.back())));
}

void PartnerWindows::ShowAlert(std::string_view text, std::string_view sender, int iconKind) {
  Show(iconKind == 0 ? "alert to all from" : "alert from", std::string(sender).append(": ").append(text));
  Answer(net::kAlertMark, text, sender, sender);
}

void PartnerWindows::SendAlertLater(std::chrono::milliseconds delay, std::string_view text, std::string_view to) {
  SendLater(delay, std::string(1, net::kAlertMark).append(text), to);
}

void PartnerWindows::AnswerLine(std::string_view text, std::string_view sender) {
  Answer(net::kChatMark, text, sender, answers_.toEverybody ? kEverybody : sender);
}

void PartnerWindows::Answer(char mark, std::string_view text, std::string_view sender, std::string_view to) {
  if (text.starts_with(kAnswer) || core::EqualIgnoringCase(sender, core::gCurName)) return;
  SendLater(answers_.delay, std::string(1, mark).append(kAnswer).append(text), to);
}

void PartnerWindows::SendLater(std::chrono::milliseconds delay, std::string message, std::string_view to) {
  outgoing_.emplace(Clock::now() + delay, Outgoing{std::move(message), std::string(to)});
}

std::chrono::milliseconds PartnerWindows::SendDue() {
  while (!outgoing_.empty() && outgoing_.begin()->first <= Clock::now()) {
    const Outgoing next = std::move(outgoing_.extract(outgoing_.begin()).mapped());
    if (next.to == kEverybody)
      messenger_.SendMsg(next.message);
    else
      messenger_.SendPrivate(next.to + " " + next.message);
  }
  if (outgoing_.empty()) return kIdle;
  return std::min(kIdle, std::chrono::ceil<std::chrono::milliseconds>(outgoing_.begin()->first - Clock::now()));
}

}  // namespace demo
