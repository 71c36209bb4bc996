#include <windows.h>

#include "core/ansi_case.h"

namespace core {
namespace {

CaseTable AskSystem() {
  CaseTable table;
  for (std::size_t i = 0; i < table.size(); ++i) {
    // One call for each byte: in one buffer a code page of two-byte characters would take neighbours for a pair.
    table[i] = static_cast<char>(i);
    ::CharLowerBuffA(&table[i], 1);
  }
  return table;
}

}  // namespace

const CaseTable& LowerCaseTable() {
  static const CaseTable table = AskSystem();
  return table;
}

}  // namespace core
