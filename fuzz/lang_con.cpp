// Arbitrary bytes as the language file: failures have one of the known numbers, and no search leaves the table.
#include "core/language.h"
#include "core/runtime_error.h"
#include "fuzz/fuzz_target.h"

namespace {

// 0 or the number of the failure; -1 when there is no English.
long Load(std::string_view file, core::LanguageTable& table) {
  try {
    table.ReadLangNames(file);
    const std::size_t column = table.FindLangCol("English");
    if (column == 0) return -1;
    table.ReadTexts(file, column);
    return 0;
  } catch (const core::RuntimeError& error) {
    return error.number;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  core::LanguageTable table;
  const long failure = Load(fuzz::TextOf(data, size), table);
  fuzz::Require(failure <= 0 || failure == 6 || failure == 9 || failure == 13);
  fuzz::Require(table.LastEntry() >= -1 && table.LastEntry() <= 200);
  int found = 0;
  for (const int code : {-1, 0, 1, 2, 7, 1001, 1201, 32767}) {
    if (table.Find(code)) ++found;
  }
  fuzz::Require(found <= table.LastEntry() + 1);
  return 0;
}
