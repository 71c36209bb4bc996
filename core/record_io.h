// The comma-separated record format of User.ini and Log.txt. It has no escapes: a quote inside a text is written as it
// is, and when the file is read again every field after it is shifted until a conversion fails. Commas and quotes are
// never trail bytes (core/code_page.h).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace core {

// A text field: quote, bytes as they are, quote.
std::string Quoted(std::string_view text);

// Collects the fields of records; EndRecord ends the line with CR LF.
class RecordWriter {
 public:
  RecordWriter& Text(std::string_view text);
  RecordWriter& Bare(std::string_view number);
  RecordWriter& EndRecord();
  const std::string& Bytes() const { return bytes_; }

 private:
  void Separate();
  std::string bytes_;
  bool atRecordStart_ = true;
};

// Reads fields by position. Commas and line ends both separate, so a record with a missing or an extra field shifts all
// later ones; the conversion of one of them fails. Holds a view: the text must outlive it.
class RecordReader {
 public:
  explicit RecordReader(std::string_view bytes) : rest_(bytes) {}

  // The next field, quoted or bare. Throws Err::InputPastEnd at the end of the text.
  std::string Text();

  // The next field as a number, 0 when it is not one. Throws Err::InputPastEnd, and Err::Overflow when it does not fit.
  std::int32_t Int32();

  void SkipEmptyRecord();
  bool AtEnd() const { return rest_.empty(); }

 private:
  void SkipBlanks();
  void SkipSeparator();
  std::string_view rest_;
};

}  // namespace core
