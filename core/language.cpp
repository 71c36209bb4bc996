#include "core/language.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "core/files.h"
#include "core/globals.h"
#include "core/log.h"
#include "core/message_box.h"
#include "core/numbers.h"
#include "core/runtime_error.h"
#include "core/text.h"

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

void ChangeLang(std::string language) {
  std::swap(gLanguage, language);
  try {
    LoadLang();
  } catch (...) {
    std::swap(gLanguage, language);
    throw;
  }
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

void LanguageTable::ReadLangNames(std::string_view& file) {
  ReadLangLine(file);
  std::copy(std::next(fields_.begin()), fields_.end(), names_.begin());  // the names end at an empty field
}

std::size_t LanguageTable::FindLangCol(std::string_view language) const {
  for (std::size_t i = 0; !names_[i].empty(); ++i) {
    if (names_[i] == language) return i + 1;
  }
  return 0;
}

void LanguageTable::ReadTexts(std::string_view file, std::size_t column) {
  std::size_t count = 0;
  for (; !file.empty(); ++count) {
    ReadLangLine(file);
    if (count == entries_.size()) throw RuntimeError(Err::SubscriptOutOfRange);
    entries_[count] = {ToInt16(StrictNumber(fields_[0])), fields_[column]};
  }
  lastEntry_ = static_cast<int>(count) - 1;
}

std::optional<std::string_view> LanguageTable::Find(int code) {
  if (cursor_ > lastEntry_) cursor_ = 0;  // the table is shorter than at the last search
  for (int compared = 0; compared <= lastEntry_; ++compared) {
    const Entry& entry = entries_[static_cast<std::size_t>(cursor_)];
    if (entry.code == code) return entry.text;
    cursor_ = cursor_ < lastEntry_ ? cursor_ + 1 : 0;
  }
  return std::nullopt;
}

// The end of the file counts as a line with one empty field.
void LanguageTable::ReadLangLine(std::string_view& file) {
  std::string_view line = TakeLine(file);
  std::size_t slot = 0;
  for (std::size_t comma; (comma = line.find(',')) != std::string_view::npos; line.remove_prefix(comma + 1)) {
    SetField(slot++, line.substr(0, comma));
  }
  SetField(slot++, line);
  SetField(slot, {});
}

void LanguageTable::SetField(std::size_t slot, std::string_view text) {
  if (slot >= fields_.size()) throw RuntimeError(Err::SubscriptOutOfRange);
  fields_[slot] = text;
}

}  // namespace core
