// The comma-separated record format of User.ini and Log.txt. It escapes nothing: a quote inside a text is written as
// it stands and shifts every field after it when the file is read again, which the reader reports as a failure. Commas
// and quotes are no part of any other letter (core/code_page.h).
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

// Reads fields by position. Comma and line end both separate, so a short record takes its next field from the next
// line and a long one pushes its last field there; the failure shows later. Holds a view: the text must outlive it.
class RecordReader {
 public:
  explicit RecordReader(std::string_view bytes) : rest_(bytes) {}

  // A quoted field up to its closing quote, or a bare one. Throws Err::InputPastEnd at the end of the text.
  std::string Text();

  // A number, bare or quoted; a non-number is 0. Throws Err::InputPastEnd, and Err::Overflow when it does not fit.
  std::int32_t Int32();

  void SkipEmptyRecord();
  bool AtEnd() const { return rest_.empty(); }

 private:
  void SkipBlanks();
  void SkipSeparator();
  std::string_view rest_;
};

}  // namespace core
