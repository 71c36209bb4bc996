// The code table behind GetText, and its parser. The file has comma-separated fields without quoting: the first line
// names the languages, every other line holds a code and its text in each language.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace core {

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
