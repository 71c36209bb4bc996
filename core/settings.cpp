#include "core/settings.h"

#include <algorithm>
#include <cstdint>
#include <functional>
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
  Text,            // quoted
  Number,          // 0 when the text is not a number
  DeferredNumber,  // converted after the whole record is read; fails when the text is not a number
  MainBound,       // of the main window: a 16-bit number
};

// What the default file holds: the global's initial or its current value, or the logon name.
enum class Default { Initial, QuotedInitial, Current, LogonName };

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

WindowBounds gMainBounds{0, 0, 2505, 4605};

// The name to save: the one in use, but not the hidden name of start-up, which the next start would take for the
// user's.
std::string gNameToSave;

// One row for each setting, in file order. The table is initialised before main(), when every global still has its
// initial value.
const std::vector<Record> kRecords = {
    {{{&gLanguage, Form::Text, Default::QuotedInitial}}, [](Program&) { LoadLang(); }},
    {{{&gAlertHeight, Form::Number}}},
    {{{&gMainBounds.left, Form::MainBound},
      {&gMainBounds.top, Form::MainBound},
      {&gMainBounds.width, Form::MainBound},
      {&gMainBounds.height, Form::MainBound}},
     [](Program& program) { program.MoveMain(gMainBounds); }},
    {{{&gUserName, Form::Text, Default::LogonName, &gNameToSave},
      {&gColour, Form::DeferredNumber, Default::QuotedInitial},
      {&gPopPos, Form::DeferredNumber, Default::QuotedInitial},
      {&gSound, Form::Text, Default::QuotedInitial},
      {&gRunAtLogon, Form::Number, Default::QuotedInitial}}},
    {{{&gChatLeft, Form::Number, Default::Current},
      {&gChatTop, Form::Number, Default::Current},
      {&gChatWidth, Form::Number, Default::Current},
      {&gChatHeight, Form::Number, Default::Current}}},
};

// Records added after the lists by later versions. A file of an earlier version ends before them, and their settings
// keep their initial values. The first field of each must not be an empty text.
const std::vector<Record> kLaterRecords = {};

void VisitFields(const std::function<void(const Field&)>& visit) {
  for (const auto* records : {&kRecords, &kLaterRecords})
    for (const Record& record : *records)
      for (const Field& field : record.fields) visit(field);
}

double NumberOf(const std::string& text, Form form) {
  return form == Form::DeferredNumber ? StrictNumber(text) : TolerantNumber(text);
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
    *std::get<std::int32_t*>(field.read) = field.form == Form::MainBound ? ToInt16(number) : ToInt32(number);
  }
}

void ReadRecord(const Record& record, RecordReader& reader, Program& program) {
  std::vector<std::pair<const Field*, std::string>> deferred;
  for (const Field& field : record.fields) {
    std::string text = reader.Text();
    if (field.form == Form::DeferredNumber) {
      deferred.emplace_back(&field, std::move(text));
    } else {
      Store(field, text);
    }
  }
  for (const auto& [field, text] : deferred) Store(*field, text);
  record.onRead(program);
}

void WriteField(const Field& field, RecordWriter& writer) {
  const std::string text = TextOf(field.written);
  field.form == Form::Text ? writer.Text(text) : writer.Bare(text);
}

void WriteDefault(const Field& field, RecordWriter& writer) {
  switch (field.inDefaultFile) {
    case Default::Initial:
      return void(writer.Bare(field.initial));
    case Default::QuotedInitial:
      return void(writer.Text(field.initial));
    case Default::Current:
      return WriteField(field, writer);
    case Default::LogonName:
      return void(writer.Text(GetLogonName()));
  }
}

void WriteRecords(const std::vector<Record>& records, void (*write)(const Field&, RecordWriter&),
                  RecordWriter& writer) {
  for (const Record& record : records) {
    for (const Field& field : record.fields) write(field, writer);
    writer.EndRecord();
  }
}

bool gPartlyRead = false;

// The lists contain names from the network. A quote in one of them would shift all following fields, and the next start
// would treat the whole file as damaged.
void WriteList(RecordWriter& writer, std::vector<std::string> lines) {
  writer.Bare(std::to_string(lines.size())).EndRecord();
  for (std::string& line : lines) {
    std::ranges::replace(line, '"', '\'');
    writer.Text(Trim(line)).EndRecord();
  }
}

// The names are read and discarded: blocking lasts for one run of the program.
void ReadBlocked(RecordReader& reader, Roster& users) {
  for (std::int32_t left = reader.Int32(); left > 0; --left) {
    const std::string name = reader.Text();
    if (const std::string_view trimmed = Trim(name); !trimmed.empty()) users.AddBlocked(trimmed);
  }
  users.ClearBlockedNames();
  users.SetGroupLines({});
}

// In the default file an empty record follows each count, hence the second read here and SkipEmptyRecord below.
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
    users.SetGroupLines(std::move(lines));  // what was read is kept, as with every other setting
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
  gPartlyRead = true;
  try {
    if (!FileExists(FilePath())) WriteDefSets();
    ReadSetsFrom(ReadFile(FilePath()), program);
    gPartlyRead = false;
  } catch (const RuntimeError&) {
    gPartlyRead = false;
    WriteDefSets();
  }
}

bool SettingsAreComplete() { return !gPartlyRead; }

void SaveSets(Program& program) {
  if (!SettingsAreComplete()) throw RuntimeError(Err::OutOfMemory);
  gMainBounds = program.RestoreMain();
  gNameToSave = gStarting != 0 ? gUserName : gCurName;
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

void ResetSettings() {
  VisitFields([](const Field& field) { Store(field, field.initial); });
}

void VisitSettings(const std::function<void(std::string_view value)>& visit) {
  VisitFields([&visit](const Field& field) {
    if (const auto text = std::get_if<std::string*>(&field.read)) return visit(**text);
    visit(TextOf(field.read));  // short enough to be held without an allocation
  });
}

}  // namespace core
