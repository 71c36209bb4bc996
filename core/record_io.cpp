#include "core/record_io.h"

#include "core/numbers.h"
#include "core/runtime_error.h"

namespace core {
namespace {

constexpr std::string_view kSeparators = ",\r\n";

}  // namespace

std::string Quoted(std::string_view text) { return std::string(1, '"').append(text).append(1, '"'); }

RecordWriter& RecordWriter::Text(std::string_view text) {
  Separate();
  bytes_ += Quoted(text);
  return *this;
}

RecordWriter& RecordWriter::Bare(std::string_view number) {
  Separate();
  bytes_ += number;
  return *this;
}

RecordWriter& RecordWriter::EndRecord() {
  bytes_ += "\r\n";
  atRecordStart_ = true;
  return *this;
}

void RecordWriter::Separate() {
  if (!atRecordStart_) bytes_ += ',';
  atRecordStart_ = false;
}

std::string RecordReader::Text() {
  SkipBlanks();
  if (rest_.empty()) throw RuntimeError(Err::InputPastEnd);
  const bool quoted = rest_.front() == '"';
  if (quoted) rest_.remove_prefix(1);
  std::string field(rest_.substr(0, quoted ? rest_.find('"') : rest_.find_first_of(kSeparators)));
  rest_.remove_prefix(field.size());
  if (quoted && !rest_.empty()) rest_.remove_prefix(1);
  SkipSeparator();
  return field;
}

std::int32_t RecordReader::Int32() { return ToInt32(TolerantNumber(Text())); }

void RecordReader::SkipEmptyRecord() {
  constexpr std::string_view kEmpty = "\"\"\r\n";
  if (rest_.starts_with(kEmpty)) rest_.remove_prefix(kEmpty.size());
}

void RecordReader::SkipBlanks() {
  while (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
}

// Text after a closing quote without a separator is the next field, so a quote inside a text shifts the fields.
void RecordReader::SkipSeparator() {
  SkipBlanks();
  if (rest_.starts_with("\r\n")) {
    rest_.remove_prefix(2);
  } else if (!rest_.empty() && kSeparators.find(rest_.front()) != std::string_view::npos) {
    rest_.remove_prefix(1);
  }
}

}  // namespace core
