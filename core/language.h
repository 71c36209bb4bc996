// The texts of the program: every caption and message by its code, from the column of Lang.con that is named gLanguage.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace core {

// Loads the texts of gLanguage; a language that is not in the file becomes "English". Throws the file's error,
// Err::TypeMismatch for a code that is not a number, Err::SubscriptOutOfRange for a 202nd line or an 11th field, and
// Err::TypeMismatch, after a message box and a log line, when the file has no English either. On failure the texts of
// the last successful load stay.
void LoadLang();

// Loads another language. When that fails, gLanguage keeps its value too; throws the error.
void ChangeLang(std::string language);

// The text of a code; empty when the code is unknown. The first unknown code of a run is reported in a message box and
// in the log, and sets gLangError; later ones are not reported.
std::string GetText(int code);

// The text of an optional code; nothing, without a report, when the code is unknown.
std::optional<std::string> FindText(int code);

// Incremented by every load, so that cached texts can be refreshed.
unsigned LanguageGeneration();

// False once a code was missing: windows then keep the captions they have, the built-in English ones at first.
bool CaptionsFromTable();

// Loads the names and help texts of the three states into gStateNames and gStateHelps.
void LoadLangConsts();

// The table behind GetText, and its parser. The file has comma-separated fields without quoting: the first line names
// the languages, every other line holds a code and its text in each language.
class LanguageTable {
 public:
  // Parses the first line and removes it from `file`. Throws Err::SubscriptOutOfRange for an 11th field.
  void ReadLangNames(std::string_view& file);

  // The column of a language, from 1; 0 when there is none. Case-sensitive.
  std::size_t FindLangCol(std::string_view language) const;

  // Parses the other lines and keeps the texts of one column. Throws Err::SubscriptOutOfRange for an 11th field or a
  // 202nd line, and the errors of StrictNumber and ToInt16 for a code; an empty line has no valid code. The entries
  // before the failing line are then stored, and LastEntry is unchanged.
  void ReadTexts(std::string_view file, std::size_t column);

  // The text of a code, nothing when it is unknown. The search starts where the last one ended, so that texts requested
  // in file order are found at once; of duplicate codes it returns the first one from there.
  std::optional<std::string_view> Find(int code);

  // Index of the last entry, -1 for a file without texts. A table never loaded has one entry: code 0, empty text.
  int LastEntry() const { return lastEntry_; }

 private:
  struct Entry {
    std::int16_t code = 0;
    std::string text;
  };

  void ReadLangLine(std::string_view& file);
  void SetField(std::size_t slot, std::string_view text);

  // Deliberately not cleared between lines, for compatibility: only the slot after the last field is emptied, so in a
  // line that lacks two or more fields the last columns repeat the previous line.
  std::array<std::string, 11> fields_;
  std::array<std::string, 11> names_;
  std::array<Entry, 201> entries_;
  int lastEntry_ = 0;
  int cursor_ = 0;
};

}  // namespace core
