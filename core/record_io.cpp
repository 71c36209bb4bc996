#include "core/record_io.h"

#include <cmath>
#include <cstdio>

#include "core/numbers.h"
#include "core/runtime_error.h"

namespace core {
namespace {

constexpr std::string_view kSeparators = ",\r\n";

}  // namespace

std::string Quoted(std::string_view text) {
  std::string quoted;
  quoted.reserve(text.size() + 2);
  return quoted.append(1, '"').append(text).append(1, '"');
}

std::string BareSingle(float value) {
  if (value == 0) return "0";  // not "-0"
  char buffer[64];
  const int digits = std::nearbyint(value) == value ? 0 : 7;
  std::snprintf(buffer, sizeof buffer, digits == 0 ? "%.0f" : "%.7g", static_cast<double>(value));
  std::string text = buffer;
  const std::size_t first = text.front() == '-' ? 1 : 0;
  if (text.compare(first, 2, "0.") == 0) text.erase(first, 1);
  return text;
}

RecordWriter& RecordWriter::Text(std::string_view text) {
  Separate();
  bytes_ += Quoted(text);
  return *this;
}

RecordWriter& RecordWriter::Number(std::int32_t value) {
  Separate();
  bytes_ += PlainText(value);
  return *this;
}

RecordWriter& RecordWriter::Single(float value) {
  Separate();
  bytes_ += BareSingle(value);
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

std::int16_t RecordReader::Int16() { return ToInt16(TolerantNumber(Text())); }

std::int32_t RecordReader::Int32() { return ToInt32(TolerantNumber(Text())); }

void RecordReader::SkipBlanks() {
  while (!rest_.empty() && rest_.front() == ' ') rest_.remove_prefix(1);
}

// What follows a closing quote without a separator is the next field: so a quote inside a text shifts the fields.
void RecordReader::SkipSeparator() {
  SkipBlanks();
  if (rest_.starts_with("\r\n")) {
    rest_.remove_prefix(2);
  } else if (!rest_.empty() && kSeparators.find(rest_.front()) != std::string_view::npos) {
    rest_.remove_prefix(1);
  }
}

}  // namespace core
