#include "net/messenger.h"

#include <functional>
#include <string>

#include "core/clock.h"
#include "core/event_loop.h"
#include "core/globals.h"
#include "core/language.h"
#include "core/numbers.h"
#include "net/packet.h"

namespace net {
namespace {

constexpr int kGreetingText = 10201;

std::string Command(std::string_view kind, std::string_view argument) { return std::string(kind).append(argument); }

}  // namespace

void Messenger::SendCmd(std::string_view command) {
  if (command.empty()) return;
  sktBC_.Send(BuildPacket(core::gCurName, command));
}

void Messenger::SendMsg(std::string_view text) { SendCmd(Command(kPresence, text)); }

void Messenger::SendPrivate(std::string_view line) { SendCmd(PrivateCommand(line)); }

void Messenger::OpenSocket() {
  sktBC_.Open(kPort);
  ++openings_;
  BeginAnswers();
  core::RunPendingEvents();
  SendColour();
  SendState();
  if (core::gStarting == 0) SendMsg(core::gCurName + " " + core::GetText(kGreetingText));
}

void Messenger::CloseSocket() {
  answers_.End();
  SendCmd(kLeave);
  sktBC_.Close();
}

void Messenger::BeginAnswers() {
  const std::int32_t now = core::TickCount();
  const bool listed = !core::gCurName.starts_with(kHiddenMark);
  answers_.Begin(listed, std::hash<std::string>()(core::gCurName) + static_cast<std::size_t>(now), now);
  WakeWhenDue(now);
}

void Messenger::AnswerNewcomer(bool listed, std::size_t names) {
  const std::int32_t now = core::TickCount();
  const Answer answer = answers_.Ask(listed, names, now);
  if (answer == Answer::Now) SendAnswer();
  if (answer != Answer::Coalesced) WakeWhenDue(now);
}

void Messenger::SendOwed() {
  const std::int32_t now = core::TickCount();
  if (answers_.Settle(now)) SendAnswer();
  WakeWhenDue(now);
}

void Messenger::WakeWhenDue(std::int32_t now) {
  if (const auto wait = answers_.Wait(now)) sktBC_.WakeIn(*wait);
}

void Messenger::SendAnswer() {
  SendCmd(kPresence);
  SendColour();
  SendState();
}

void Messenger::SendColour() { SendCmd(Command(kColour, core::GeneralText(core::gColour))); }

void Messenger::SendState() { SendCmd(Command(kState, std::to_string(core::gStatus))); }

}  // namespace net
