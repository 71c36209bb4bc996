#include "ui/options/apply_sets.h"

#include "core/callback_guard.h"
#include "core/language.h"
#include "core/message_box.h"
#include "core/settings.h"

namespace options {
namespace {

constexpr int kNoNetworkText = 1208;

void JoinNetwork(core::Program& program) {
  try {
    program.OpenSocket();
  } catch (...) {  // even without memory the options are saved
    core::GuardedSilently([] {
      core::ShowBox({.text = core::GetText(kNoNetworkText) + ": " + NumberAndDescription(core::CurrentError())});
    });
  }
}

}  // namespace

void ApplySets(core::Program& program, const SetsWriters& write) {
  write.language();
  program.CloseSocket();
  program.Users().ClearlvUsers();  // the answers to the new name fill it again
  write.user();
  JoinNetwork(program);
  write.others();
  core::SaveSets(program);
}

}  // namespace options
