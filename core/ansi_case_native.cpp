#include "core/ansi_case.h"

namespace core {
namespace {

// Windows-1252. Its capitals lie 32 below their small letters but for the four rows at the end; 0xD7 and 0xF7 are the
// signs of multiplication and division.
constexpr CaseTable Windows1252() {
  CaseTable table{};
  for (int i = 0; i < 256; ++i) {
    const bool capital = (i >= 'A' && i <= 'Z') || (i >= 0xC0 && i <= 0xDE && i != 0xD7);
    table[static_cast<std::size_t>(i)] = static_cast<char>(capital ? i + 32 : i);
  }
  table[0x8A] = '\x9A';
  table[0x8C] = '\x9C';
  table[0x8E] = '\x9E';
  table[0x9F] = '\xFF';
  return table;
}

constexpr CaseTable kTable = Windows1252();

}  // namespace

const CaseTable& LowerCaseTable() { return kTable; }

}  // namespace core
