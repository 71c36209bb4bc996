#include "ui/options/option_values.h"

#include "core/callback_guard.h"
#include "core/language.h"
#include "core/message_box.h"
#include "core/settings.h"
#include "core/start_up.h"
#include "core/text.h"

namespace options {
namespace {

bool IsLetterOrDigit(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

bool HasLetterOrDigit(std::string_view name) {
  while (!name.empty()) {
    const std::string_view character = core::FirstCharacter(name);
    if (character.size() == 1 && IsLetterOrDigit(character[0])) return true;
    name.remove_prefix(character.size());
  }
  return false;
}

bool IsUsable(std::string_view name) {
  return HasLetterOrDigit(name) && core::Find(name, "|") == std::string_view::npos;
}

bool IsTaken(std::string_view name, const core::Roster& users, bool ownNameIsTaken) {
  return ownNameIsTaken ? users.CountRows(name) > 0 : core::NameInUse(users, name);
}

std::size_t BarsIn(std::string_view line) {
  std::size_t bars = 0;
  for (std::size_t bar = core::Find(line, "|"); bar != std::string_view::npos; bar = core::Find(line, "|", bar + 1))
    ++bars;
  return bars;
}

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

int RefusalOf(std::string_view name, const core::Roster& users, bool ownNameIsTaken) {
  if (IsTaken(name, users, ownNameIsTaken)) return kNameInUseText;
  return IsUsable(name) ? 0 : kNameUnusableText;
}

std::string ProperCase(std::string_view name) {
  const std::string lower = core::LowerCase(name);
  const std::string_view first = core::FirstCharacter(lower);
  return first.empty() ? lower : core::UpperCase(first).append(lower, first.size());
}

std::vector<Group> GroupsOf(const std::vector<std::string>& lines) {
  std::vector<Group> groups;
  for (const std::string& line : lines) {
    const std::size_t closed = BarsIn(line);
    if (closed == 0) continue;
    Group& group = groups.emplace_back();
    group.name = core::BarField(line, 0);
    for (std::size_t i = 1; i < closed; ++i) group.members.emplace_back(core::BarField(line, i));
  }
  return groups;
}

std::vector<std::string> LinesOf(const std::vector<Group>& groups) {
  std::vector<std::string> lines;
  for (const Group& group : groups) {
    std::string line = group.name + '|';
    for (const std::string& member : group.members) line.append(member).append(1, '|');
    if (BarsIn(line) != 1) lines.push_back(std::move(line));
  }
  return lines;
}

std::string SoundKey(std::string_view file) {
  std::string key(file);
  if (!file.ends_with(".wav")) key += ".wav";
  return key;
}

std::vector<Sound> SoundsOf(const std::vector<std::string>& files) {
  std::vector<Sound> sounds{{"(S)", ""}, {"(B)", ""}};
  for (const std::string& file : files) sounds.push_back({SoundKey(file), file});
  return sounds;
}

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
