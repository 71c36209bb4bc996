// Arbitrary bytes as the name typed into the save dialog, its pattern and its folder, a line each. The first byte
// chooses the code page and the file type.
#include "ui/toolkit/save/save_name.h"

#include <string>
#include <vector>

#include "core/text.h"
#include "fuzz/fuzz_target.h"

namespace {

using Characters = std::vector<std::string_view>;

Characters CharactersOf(std::string_view text) {
  Characters characters;
  for (; !text.empty(); text.remove_prefix(characters.back().size())) characters.push_back(core::FirstCharacter(text));
  return characters;
}

// Reference implementation of pattern matching: dynamic programming over prefixes, slow but obviously correct.
bool Matches(const Characters& name, const Characters& pattern) {
  std::vector<bool> row(name.size() + 1, false);
  row[0] = true;
  for (const std::string_view wanted : pattern) {
    std::vector<bool> next(row.size(), false);
    for (std::size_t i = 0; i < row.size(); ++i) {
      if (wanted == "*")
        next[i] = row[i] || (i > 0 && next[i - 1]);
      else
        next[i] = i > 0 && row[i - 1] && (wanted == "?" || core::EqualIgnoringCase(wanted, name[i - 1]));
    }
    row = next;
  }
  return row.back();
}

bool MatchesAny(std::string_view name, std::string_view patterns) {
  const Characters characters = CharactersOf(name);
  for (std::size_t end = 0; end != std::string_view::npos;) {
    end = patterns.find(';');
    if (Matches(characters, CharactersOf(core::Trim(patterns.substr(0, end))))) return true;
    if (end != std::string_view::npos) patterns.remove_prefix(end + 1);
  }
  return false;
}

void CheckDecision(std::string_view typed, const std::string& folder, std::string_view extension) {
  const auto isFolder = [](const std::string& path) { return path.size() % 3 == 0; };
  const toolkit::SaveDecision decision = toolkit::DecideSave(typed, folder, extension, isFolder);
  switch (decision.action) {
    case toolkit::SaveAction::None:
      return fuzz::Require(core::Trim(typed).empty());
    case toolkit::SaveAction::Filter:
      return fuzz::Require(decision.text.starts_with("*."));
    case toolkit::SaveAction::GoTo:
      fuzz::Require(toolkit::ClosedFolder(decision.text) == decision.text);
      break;
    case toolkit::SaveAction::Save:
      fuzz::Require(core::EqualIgnoringCase(decision.text.substr(decision.text.size() - 4), extension));
      break;
  }
  const bool onDrive = decision.text.size() > 2 && decision.text[1] == ':' && decision.text[2] == '\\';
  fuzz::Require(onDrive || decision.text.starts_with("\\\\"));
}

void CheckSteps(const std::string& folder) {
  const std::vector<std::string> steps = toolkit::PathSteps(folder);
  const std::string whole = toolkit::FolderOf(steps, steps.size());
  fuzz::Require(toolkit::PathSteps(whole) == steps);
  fuzz::Require(toolkit::FolderOf(steps, 1) == steps[0]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text = fuzz::TextOf(data, size);
  if (text.size() > 1000) return 0;  // paths are shorter, and the reference implementation is slow
  const unsigned char choice = fuzz::TakeByte(text);
  fuzz::ChooseCodePage(choice);
  const std::string typed = fuzz::Typed(fuzz::TakeLine(text));
  const std::string_view pattern = fuzz::TakeLine(text);
  const std::string folder = (choice & 2 ? "\\\\server\\share\\" : "C:\\") + fuzz::Typed(text);
  const std::string_view extension = toolkit::ExtensionOf(toolkit::kSaveTypes[choice & 1]);
  const std::string_view other = toolkit::ExtensionOf(toolkit::kSaveTypes[~choice & 1]);

  CheckDecision(typed, folder, extension);
  CheckSteps(folder);
  fuzz::Require(toolkit::MatchesPattern(typed, pattern) == MatchesAny(typed, pattern));
  const std::string switched = toolkit::SwitchExtension(typed, toolkit::PatternOf(extension), other);
  const std::string back = toolkit::SwitchExtension(switched, toolkit::PatternOf(other), extension);
  fuzz::Require(switched.size() == typed.size());
  fuzz::Require(core::EqualIgnoringCase(back, typed) || switched == typed);
  return 0;
}
