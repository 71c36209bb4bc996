#include "ui/options/choices.h"

#include "core/globals.h"
#include "core/language.h"
#include "core/message_box.h"
#include "core/runtime_error.h"
#include "core/settings.h"

namespace options {
namespace {

constexpr int kNoNetworkText = 1208;

// Both names change: one is sent and saved, the other comes back when start-up goes on.
void TakeName(const Choices& choices) {
  core::gUserName = core::gCurName = choices.name;
  core::gColour = choices.colour.value_or(core::gColour);
}

// Under the name as it was; the roster fills anew from the answers to the joining.
void LeaveNetwork(core::Program& program) {
  program.CloseSocket();
  program.Users().ClearlvUsers();
}

void JoinNetwork(core::Program& program) {
  try {
    program.OpenSocket();
  } catch (const core::RuntimeError& error) {
    core::ShowBox({.text = core::GetText(kNoNetworkText) + ": " + NumberAndDescription(error)});
  }
}

void FillLists(const Choices& choices, core::Roster& users) {
  users.ClearBlockedNames();
  for (const std::string& name : choices.blocked) users.AddBlocked(name);
  users.RefBlock();
  users.SetGroupLines(LinesOf(choices.groups));
  users.RefGroups();
}

}  // namespace

void Apply(const Choices& choices, core::Program& program) {
  core::gLanguage = choices.language.value_or(core::gLanguage);
  LeaveNetwork(program);
  TakeName(choices);
  JoinNetwork(program);
  core::gPopPos = choices.position.value_or(core::gPopPos);
  core::gSound = choices.sound.value_or(core::gSound);
  core::gRunAtLogon = choices.runAtLogon;
  FillLists(choices, program.Users());
  core::SaveSets(program);
}

}  // namespace options
