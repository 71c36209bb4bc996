#include "core/language.h"

#include <array>
#include <utility>

#include "core/files.h"
#include "core/globals.h"
#include "core/language_table.h"
#include "core/log.h"
#include "core/message_box.h"
#include "core/runtime_error.h"

namespace core {
namespace {

constexpr char kFileName[] = "Lang.con";
constexpr char kFallback[] = "English";

constexpr int kFirstStateName = 8203;  // three names, then three help texts

LanguageTable gTable;
unsigned gGeneration = 0;

// The column of gLanguage, or that of the fallback, which then becomes gLanguage.
std::size_t FindLangCol(const LanguageTable& table) {
  if (const std::size_t column = table.FindLangCol(gLanguage)) return column;
  gLanguage = kFallback;
  if (const std::size_t column = table.FindLangCol(gLanguage)) return column;
  ShowBox({.text = "Error reading language files. No languages available"});
  WriteLog("Cannot find default language or English");
  throw RuntimeError(Err::TypeMismatch);
}

// Sets the flag first, so that a missing code on the way is not reported again.
void ReportMissingCode(int code) {
  gLangError = -1;
  const std::string number = std::to_string(code);
  PostBox({.text = "Error reading language files. Cannot find code " + number,
           .title = "Language Error",
           .icon = BoxIcon::Information});
  WriteLog("Cannot find text code " + number);
}

void ReadTable(std::string_view file, LanguageTable& table) {
  table.ReadLangNames(file);
  table.ReadTexts(file, FindLangCol(table));
}

void Take(LanguageTable table) {
  gTable = std::move(table);
  ++gGeneration;
}

}  // namespace

void LoadLang() {
  const std::string bytes = ReadFile(InProgramDirectory(kFileName));
  LanguageTable table = gTable;
  try {
    ReadTable(bytes, table);
  } catch (const RuntimeError&) {
    if (gLangCount <= 0) Take(std::move(table));  // the first load keeps the texts before the failure
    throw;
  }
  gLangCount = static_cast<std::int16_t>(table.LastEntry());
  Take(std::move(table));
}

std::optional<std::string> FindText(int code) {
  const auto text = gTable.Find(code);
  return text ? std::optional<std::string>(*text) : std::nullopt;
}

std::string GetText(int code) {
  if (auto text = FindText(code)) return *std::move(text);
  if (gLangError != -1) ReportMissingCode(code);
  return {};
}

unsigned LanguageGeneration() { return gGeneration; }

bool CaptionsFromTable() { return gLangError != -1; }

void LoadLangConsts() {
  int code = kFirstStateName;
  std::array<std::string, 3> names, helps;
  for (auto* const texts : {&names, &helps})
    for (std::string& text : *texts) text = GetText(code++);
  gStateNames = std::move(names);
  gStateHelps = std::move(helps);
}

}  // namespace core
