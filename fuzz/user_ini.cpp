// Arbitrary bytes as the settings file: failures have one of the known numbers, and a valid file survives a round trip.
#include "core/globals.h"
#include "core/runtime_error.h"
#include "core/settings.h"
#include "fuzz/fuzz_target.h"
#include "support/memory_files.h"
#include "support/recording_program.h"

namespace {

// 0 or the number of the failure.
long Read(std::string_view bytes, support::RecordingProgram& program) {
  try {
    core::ReadSetsFrom(bytes, program);
    return 0;
  } catch (const core::RuntimeError& error) {
    return error.number;
  }
}

bool HasQuote(const std::vector<std::string>& lines) {
  for (const std::string& line : lines) {
    if (line.find('"') != std::string::npos) return true;
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  support::Files() = {};
  support::Files()["Lang.con"] = "Code,English,Deutsch\r\n1001,one,eins\r\n";
  support::ResetDesktop();
  support::RecordingProgram program;
  const long failure = Read(fuzz::TextOf(data, size), program);
  fuzz::Require(failure == 0 || failure == 6 || failure == 13 || failure == 62);
  if (failure != 0) return 0;

  // A text with a quote does not survive a round trip.
  std::vector<std::string> texts = program.users.GroupLines();
  texts.insert(texts.end(), {core::gUserName, core::gSound});
  if (HasQuote(texts)) return 0;
  core::gCurName = core::gUserName;
  core::SaveSets(program);
  const std::string saved = support::Files()["User.ini"];
  fuzz::Require(Read(saved, program) == 0);
  core::SaveSets(program);
  fuzz::Require(support::Files()["User.ini"] == saved);
  return 0;
}
