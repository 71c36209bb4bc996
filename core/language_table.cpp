#include "core/language_table.h"

#include "core/numbers.h"
#include "core/runtime_error.h"

namespace core {
namespace {

// Removes the first line of the text, which CR LF, CR or LF ends.
std::string_view TakeLine(std::string_view& file) {
  const std::string_view line = file.substr(0, file.find_first_of("\r\n"));
  file.remove_prefix(line.size());
  if (!file.empty()) file.remove_prefix(file.starts_with("\r\n") ? 2 : 1);
  return line;
}

}  // namespace

void LanguageTable::ReadLangNames(std::string_view& file) {
  ReadLangLine(file);
  std::size_t count = 0;
  for (; count + 1 < fields_.size() && !fields_[count + 1].empty(); ++count) names_[count] = fields_[count + 1];
  names_[count].clear();
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
