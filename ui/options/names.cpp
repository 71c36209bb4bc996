#include "ui/options/names.h"

#include <algorithm>

#include "core/ansi_case.h"
#include "core/start_up.h"
#include "core/text.h"

namespace options {
namespace {

bool IsLetterOrDigit(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'); }

bool IsUsable(std::string_view name) {
  return std::ranges::any_of(name, IsLetterOrDigit) && name.find('|') == std::string_view::npos;
}

bool IsTaken(std::string_view name, const core::Roster& users, bool ownNameIsTaken) {
  return ownNameIsTaken ? users.CountRows(name) > 0 : core::NameInUse(users, name);
}

// The case table knows lower forms only: the upper one is the other character with the same lower form.
char Upper(char c) {
  const core::CaseTable& lower = core::LowerCaseTable();
  for (std::size_t i = 0; i < lower.size(); ++i)
    if (lower[i] == c && static_cast<char>(i) != c) return static_cast<char>(i);
  return c;
}

}  // namespace

int RefusalOf(std::string_view name, const core::Roster& users, bool ownNameIsTaken) {
  if (IsTaken(name, users, ownNameIsTaken)) return kNameInUse;
  return IsUsable(name) ? 0 : kNameUnusable;
}

std::string ProperCase(std::string_view name) {
  std::string proper = core::LowerCase(name);
  if (!proper.empty()) proper[0] = Upper(proper[0]);
  return proper;
}

}  // namespace options
