// The code table behind GetText and the reading of its file: lines of fields parted by commas, no quoting. The first
// line names the languages, every other line holds a code and its text in each language.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace core {

class LanguageTable {
 public:
  // Reads the first line and takes it off `file`. Throws Err::SubscriptOutOfRange for an 11th field.
  void ReadLangNames(std::string_view& file);

  // The field that holds the texts of a language, from 1; 0 when the file lacks it. Case counts.
  std::size_t FindLangCol(std::string_view language) const;

  // Reads all further lines, taking the texts of one column. Throws Err::SubscriptOutOfRange for an 11th field or a
  // 202nd line, and the failures of StrictNumber and ToInt16 for a code, that of an empty line included; the entries
  // before the failing line are then in place, and LastEntry is what it was.
  void ReadTexts(std::string_view file, std::size_t column);

  // The text of a code, none when it is unknown. Searches from where the last search ended, so that texts asked for
  // in the order of the file are found at once; of two equal codes the first one met that way counts.
  std::optional<std::string_view> Find(int code);

  // Index of the last entry loaded, -1 for a file of names alone. A table never loaded has one entry: code 0, no text.
  int LastEntry() const { return lastEntry_; }

 private:
  struct Entry {
    std::int16_t code = 0;
    std::string text;
  };

  void ReadLangLine(std::string_view& file);
  void SetField(std::size_t slot, std::string_view text);

  // Deliberately not cleared between lines, for compatibility: only the slot after the last field is emptied, so a line
  // that lacks two or more fields takes the previous line's texts for its last columns.
  std::array<std::string, 11> fields_;
  std::array<std::string, 11> names_;
  std::array<Entry, 201> entries_;
  int lastEntry_ = 0;
  int cursor_ = 0;
};

}  // namespace core
