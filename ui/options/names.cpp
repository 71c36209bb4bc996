#include "ui/options/names.h"

#include "core/start_up.h"
#include "core/text.h"

namespace options {
namespace {

bool IsLetterOrDigit(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

bool HasLetterOrDigit(std::string_view name) {
  while (!name.empty()) {
    const std::string_view letter = core::FirstLetter(name);
    if (letter.size() == 1 && IsLetterOrDigit(letter[0])) return true;
    name.remove_prefix(letter.size());
  }
  return false;
}

bool IsUsable(std::string_view name) {
  return HasLetterOrDigit(name) && core::Find(name, "|") == std::string_view::npos;
}

bool IsTaken(std::string_view name, const core::Roster& users, bool ownNameIsTaken) {
  return ownNameIsTaken ? users.CountRows(name) > 0 : core::NameInUse(users, name);
}

}  // namespace

int RefusalOf(std::string_view name, const core::Roster& users, bool ownNameIsTaken) {
  if (IsTaken(name, users, ownNameIsTaken)) return kNameInUseText;
  return IsUsable(name) ? 0 : kNameUnusableText;
}

std::string ProperCase(std::string_view name) {
  const std::string lower = core::LowerCase(name);
  const std::string_view first = core::FirstLetter(lower);
  return first.empty() ? lower : core::UpperCase(first).append(lower, first.size());
}

}  // namespace options
