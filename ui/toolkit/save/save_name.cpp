#include "ui/toolkit/save/save_name.h"

#include <algorithm>

#include "core/text.h"

namespace toolkit {
namespace {

constexpr std::size_t kExtensionLength = 4;

std::string_view LastCharacters(std::string_view text, std::size_t count) {
  return text.substr(text.size() - std::min(text.size(), count));
}

// Backtracks to the last "*" only, so the time is at most the product of the two lengths. PathMatchSpec takes
// exponential time: five stars and a name of 250 characters took 3.6 s (Wine 8), six stars a hundred times as long.
bool MatchesOne(std::string_view name, std::string_view pattern) {
  std::string_view behindStar, resume;
  bool starred = false;
  while (!name.empty()) {
    const std::string_view character = core::FirstCharacter(name), wanted = core::FirstCharacter(pattern);
    if (wanted == "*") {
      starred = true;
      pattern.remove_prefix(1);
      behindStar = pattern;
      resume = name;
    } else if (wanted == "?" || core::EqualIgnoringCase(wanted, character)) {
      pattern.remove_prefix(wanted.size());
      name.remove_prefix(character.size());
    } else if (starred) {
      pattern = behindStar;
      resume.remove_prefix(core::FirstCharacter(resume).size());
      name = resume;
    } else {
      return false;
    }
  }
  return pattern.find_first_not_of('*') == std::string_view::npos;
}

bool HasDrive(std::string_view name) { return name.find(':', 1) == 1; }

// "C:" of a folder on a drive, "\\server\share" of one on the network.
std::string_view RootOf(std::string_view folder) {
  if (HasDrive(folder)) return folder.substr(0, 2);
  const std::size_t server = core::Find(folder, "\\", 2);
  if (server == std::string_view::npos) return folder;
  return folder.substr(0, core::Find(folder, "\\", server + 1));
}

}  // namespace

std::string_view ExtensionOf(std::string_view typeCaption) {
  return LastCharacters(typeCaption.substr(0, typeCaption.rfind(')')), kExtensionLength);
}

std::string PatternOf(std::string_view extension) { return std::string("*").append(extension); }

std::string SwitchExtension(std::string_view name, std::string_view formerPattern, std::string_view extension) {
  const std::string_view former = formerPattern.substr(std::min<std::size_t>(1, formerPattern.size()));
  if (!core::EqualIgnoringCase(LastCharacters(name, kExtensionLength), former)) return std::string(name);
  return std::string(name.substr(0, name.size() - former.size())).append(extension);
}

bool MatchesPattern(std::string_view name, std::string_view pattern) {
  for (;;) {
    const std::size_t end = pattern.find(';');
    if (MatchesOne(name, core::Trim(pattern.substr(0, end)))) return true;
    if (end == std::string_view::npos) return false;
    pattern.remove_prefix(end + 1);
  }
}

std::string ClosedFolder(std::string_view folder) {
  std::string closed(folder);
  if (closed.empty() || core::FindLast(closed, "\\") != closed.size() - 1) closed += '\\';
  return closed;
}

std::string FullPath(std::string_view folder, std::string_view name) {
  if (name.starts_with("\\\\")) return std::string(name);
  const std::string_view drive = HasDrive(name) ? name.substr(0, 2) : RootOf(folder);
  const std::string_view path = HasDrive(name) ? name.substr(2) : name;
  const bool below = !path.empty() && core::EqualIgnoringCase(drive, RootOf(folder));
  if (path.starts_with('\\')) return std::string(drive).append(path);
  return ClosedFolder(below ? folder : drive).append(path);
}

std::vector<std::string> PathSteps(std::string_view folder) {
  const std::string_view root = RootOf(folder);
  std::vector<std::string> steps{ClosedFolder(root)};
  std::string_view rest = folder.substr(root.size());
  while (!rest.empty()) {
    const std::size_t slash = std::min(core::Find(rest, "\\"), rest.size());
    if (slash > 0) steps.emplace_back(rest.substr(0, slash));
    rest.remove_prefix(std::min(slash + 1, rest.size()));
  }
  return steps;
}

std::string FolderOf(const std::vector<std::string>& steps, std::size_t count) {
  std::string folder;
  for (std::size_t i = 0; i < std::min(count, steps.size()); ++i) folder += ClosedFolder(steps[i]);
  return folder;
}

SaveDecision DecideSave(std::string_view typed, std::string_view folder, std::string_view extension,
                        const std::function<bool(const std::string&)>& isFolder) {
  std::string name(core::Trim(typed));
  if (name.empty()) return {};
  if (name.starts_with("*.")) return {SaveAction::Filter, name};
  std::ranges::replace(name, '/', '\\');
  const std::string path = FullPath(folder, name);
  if (isFolder(path)) return {SaveAction::GoTo, ClosedFolder(path)};
  if (core::EqualIgnoringCase(LastCharacters(path, extension.size()), extension)) return {SaveAction::Save, path};
  return {SaveAction::Save, path + std::string(extension)};
}

}  // namespace toolkit
