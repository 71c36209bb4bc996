#include "core/settings.h"

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "core/files.h"
#include "core/globals.h"
#include "core/language.h"
#include "core/numbers.h"
#include "core/process.h"
#include "core/record_io.h"
#include "core/runtime_error.h"
#include "core/text.h"

namespace core {
namespace {

constexpr char kFileName[] = "User.ini";

std::string FilePath() { return InProgramDirectory(kFileName); }

using Global = std::variant<std::string*, std::int16_t*, std::int32_t*>;

// How a field is read and written.
enum class Form {
  Text,        // quoted
  Number,      // a text that is no number is read as 0
  LateNumber,  // read as text, and converted when its whole record is read; fails for a text that is no number
  Place,       // of the main window: read as a 16-bit number
};

// What the default file has in place of the global's present value.
enum class Default { Initial, QuotedInitial, Present, LogonName };

std::string TextOf(Global global) {
  if (const auto text = std::get_if<std::string*>(&global)) return **text;
  if (const auto number = std::get_if<std::int16_t*>(&global)) return std::to_string(**number);
  return std::to_string(*std::get<std::int32_t*>(global));
}

struct Field {
  Global read;
  Form form;
  Default inDefaultFile = Default::Initial;
  Global written = read;
  std::string initial = TextOf(read);
};

// One line of the file.
struct Record {
  std::vector<Field> fields;
  void (*onRead)(Program&) = [](Program&) {};
};

WindowPlace gMainPlace{0, 0, 2505, 4605};

// The name in use, but not the hidden one of a copy that still listens: the next start would take it for the user's.
std::string gNameToKeep;

// One row for each setting, in the order of the file. The table is made before main() starts, when every global still
// has its initial value.
const std::vector<Record> kRecords = {
    {{{&gLanguage, Form::Text, Default::QuotedInitial}}, [](Program&) { LoadLang(); }},
    {{{&gAlertHeight, Form::Number}}},
    {{{&gMainPlace.left, Form::Place},
      {&gMainPlace.top, Form::Place},
      {&gMainPlace.width, Form::Place},
      {&gMainPlace.height, Form::Place}},
     [](Program& program) { program.PlaceMain(gMainPlace); }},
    {{{&gUserName, Form::Text, Default::LogonName, &gNameToKeep},
      {&gColour, Form::LateNumber, Default::QuotedInitial},
      {&gPopPos, Form::LateNumber, Default::QuotedInitial},
      {&gSound, Form::Text, Default::QuotedInitial},
      {&gRunAtLogon, Form::Number, Default::QuotedInitial}}},
    {{{&gChatLeft, Form::Number, Default::Present},
      {&gChatTop, Form::Number, Default::Present},
      {&gChatWidth, Form::Number, Default::Present},
      {&gChatHeight, Form::Number, Default::Present}}},
};

// Records that a later version added behind the lists. A file of an earlier version ends before them; such a setting
// keeps its initial value. The first field of each must not be an empty text.
const std::vector<Record> kLaterRecords = {};

double NumberOf(const std::string& text, Form form) {
  return form == Form::LateNumber ? StrictNumber(text) : TolerantNumber(text);
}

void Store(const Field& field, const std::string& text) {
  if (const auto global = std::get_if<std::string*>(&field.read)) {
    **global = text;
    return;
  }
  const double number = NumberOf(text, field.form);
  if (const auto global = std::get_if<std::int16_t*>(&field.read)) {
    **global = ToInt16(number);
  } else {
    *std::get<std::int32_t*>(field.read) = field.form == Form::Place ? ToInt16(number) : ToInt32(number);
  }
}

void ReadRecord(const Record& record, RecordReader& reader, Program& program) {
  std::vector<std::pair<const Field*, std::string>> late;
  for (const Field& field : record.fields) {
    std::string text = reader.Text();
    if (field.form == Form::LateNumber) {
      late.emplace_back(&field, std::move(text));
    } else {
      Store(field, text);
    }
  }
  for (const auto& [field, text] : late) Store(*field, text);
  record.onRead(program);
}

void WriteField(const Field& field, RecordWriter& writer) {
  const std::string text = TextOf(field.written);
  field.form == Form::Text ? writer.Text(text) : writer.Bare(text);
}

void WriteDefault(const Field& field, RecordWriter& writer) {
  switch (field.inDefaultFile) {
    case Default::Initial:
      writer.Bare(field.initial);
      break;
    case Default::QuotedInitial:
      writer.Text(field.initial);
      break;
    case Default::Present:
      WriteField(field, writer);
      break;
    case Default::LogonName:
      writer.Text(GetLogonName());
      break;
  }
}

void WriteRecords(const std::vector<Record>& records, void (*write)(const Field&, RecordWriter&),
                  RecordWriter& writer) {
  for (const Record& record : records) {
    for (const Field& field : record.fields) write(field, writer);
    writer.EndRecord();
  }
}

void WriteList(RecordWriter& writer, const std::vector<std::string>& lines) {
  writer.Bare(std::to_string(lines.size())).EndRecord();
  for (const std::string& line : lines) writer.Text(Trim(line)).EndRecord();
}

// The names are read and then forgotten: blocking lasts for one run of the program.
void ReadBlocked(RecordReader& reader, Roster& users) {
  for (std::int32_t left = reader.Int32(); left > 0; --left) {
    const std::string name = reader.Text();
    if (const std::string_view trimmed = Trim(name); !trimmed.empty()) users.AddBlocked(trimmed);
  }
  users.ClearBlockedNames();
  users.SetGroupLines({});
}

// In the default file an empty record follows each count, hence the second reading, and the skipping below.
std::int32_t ReadGroupCount(RecordReader& reader) {
  std::string count = reader.Text();
  if (count.empty()) count = reader.Text();
  return ToInt32(StrictNumber(count));
}

void ReadGroups(RecordReader& reader, Roster& users) {
  std::vector<std::string> lines;
  try {
    for (std::int32_t left = ReadGroupCount(reader); left > 0; --left) {
      const std::string line = reader.Text();
      if (const std::string_view trimmed = Trim(line); !trimmed.empty()) lines.emplace_back(trimmed);
    }
  } catch (const RuntimeError&) {
    users.SetGroupLines(std::move(lines));  // what was read stays, as with every other setting
    throw;
  }
  if (lines.empty()) reader.SkipEmptyRecord();
  users.SetGroupLines(std::move(lines));
  users.RefGroups();
}

}  // namespace

void ReadSetsFrom(std::string_view bytes, Program& program) {
  RecordReader reader(bytes);
  for (const Record& record : kRecords) ReadRecord(record, reader, program);
  ReadBlocked(reader, program.Users());
  ReadGroups(reader, program.Users());
  for (const Record& record : kLaterRecords)
    if (!reader.AtEnd()) ReadRecord(record, reader, program);
}

void ReadSets(Program& program) {
  try {
    if (!FileExists(FilePath())) WriteDefSets();
    ReadSetsFrom(ReadFile(FilePath()), program);
  } catch (const RuntimeError&) {
    WriteDefSets();
  }
}

void SaveSets(Program& program) {
  gMainPlace = program.RestoreMain();
  gNameToKeep = gStarting != 0 ? gUserName : gCurName;
  RecordWriter writer;
  WriteRecords(kRecords, WriteField, writer);
  WriteList(writer, program.Users().BlockedNames());
  WriteList(writer, program.Users().GroupLines());
  WriteRecords(kLaterRecords, WriteField, writer);
  WriteFileSafely(FilePath(), writer.Bytes());
}

void WriteDefSets() {
  RecordWriter writer;
  WriteRecords(kRecords, WriteDefault, writer);
  for (int list = 0; list < 2; ++list) writer.Text("0").EndRecord().Text("").EndRecord();  // blocked names, groups
  WriteRecords(kLaterRecords, WriteDefault, writer);
  WriteFileSafely(FilePath(), writer.Bytes());
}

}  // namespace core
