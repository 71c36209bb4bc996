#include "net/messenger.h"

#include "core/event_loop.h"
#include "core/globals.h"
#include "core/language.h"
#include "core/numbers.h"
#include "net/packet.h"

namespace net {
namespace {

constexpr int kGreeting = 10201;

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
  core::RunPendingEvents();
  SendColour();
  SendState();
  if (core::gStarting == 0) SendMsg(core::gCurName + " " + core::GetText(kGreeting));
}

void Messenger::CloseSocket() {
  SendCmd(kLeave);
  sktBC_.Close();
}

void Messenger::AnswerNewcomer() {
  SendCmd(kPresence);
  SendColour();
  SendState();
}

void Messenger::SendColour() { SendCmd(Command(kColour, core::GeneralText(core::gColour))); }

void Messenger::SendState() { SendCmd(Command(kState, core::PlainText(core::gStatus))); }

}  // namespace net
