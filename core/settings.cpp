#include "core/settings.h"

#include <string>
#include <utility>
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

constexpr WindowPlace kDefaultPlace{0, 0, 2505, 4605};

std::string FilePath() { return InProgramDirectory(kFileName); }

RecordWriter& WritePlace(RecordWriter& writer, const WindowPlace& place) {
  for (const std::int32_t length : {place.left, place.top, place.width, place.height}) {
    writer.Single(static_cast<float>(length));
  }
  return writer.EndRecord();
}

RecordWriter& WriteChatPlace(RecordWriter& writer) {
  for (const std::int32_t length : {gChatLeft, gChatTop, gChatWidth, gChatHeight}) writer.Number(length);
  return writer.EndRecord();
}

void WriteList(RecordWriter& writer, const std::vector<std::string>& lines) {
  writer.Number(static_cast<std::int32_t>(lines.size())).EndRecord();
  for (const std::string& line : lines) writer.Text(Trim(line)).EndRecord();
}

void ReadUser(RecordReader& reader) {
  gUserName = reader.Text();
  const std::string colour = reader.Text(), position = reader.Text();
  gSound = reader.Text();
  gRunAtLogon = reader.Int16();
  gColour = ToInt32(StrictNumber(colour));
  gPopPos = ToInt16(StrictNumber(position));
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

// The default file has an empty record before each count, hence the second reading.
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
  users.SetGroupLines(std::move(lines));
  users.RefGroups();
}

}  // namespace

void ReadSetsFrom(std::string_view bytes, Program& program) {
  RecordReader reader(bytes);
  gLanguage = reader.Text();
  LoadLang();
  gAlertHeight = reader.Int16();
  WindowPlace place;
  for (std::int32_t* length : {&place.left, &place.top, &place.width, &place.height}) *length = reader.Int16();
  program.PlaceMain(place);
  ReadUser(reader);
  for (std::int32_t* length : {&gChatLeft, &gChatTop, &gChatWidth, &gChatHeight}) *length = reader.Int32();
  ReadBlocked(reader, program.Users());
  ReadGroups(reader, program.Users());
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
  const WindowPlace place = program.RestoreMain();
  const Roster& users = program.Users();
  RecordWriter writer;
  writer.Text(gLanguage).EndRecord();
  writer.Number(gAlertHeight).EndRecord();
  WritePlace(writer, place);
  writer.Text(gCurName).Number(gColour).Number(gPopPos).Text(gSound).Number(gRunAtLogon).EndRecord();
  WriteChatPlace(writer);
  WriteList(writer, users.BlockedNames());
  WriteList(writer, users.GroupLines());
  WriteFileSafely(FilePath(), writer.Bytes());
}

void WriteDefSets() {
  RecordWriter writer;
  writer.Text("English").EndRecord();
  writer.Number(0).EndRecord();
  WritePlace(writer, kDefaultPlace);
  writer.Text(LogonName()).Text("0").Text("4").Text("(B)").Text("0").EndRecord();
  WriteChatPlace(writer);
  for (int list = 0; list < 2; ++list) writer.Text("0").EndRecord().Text("").EndRecord();  // blocked names, groups
  WriteFileSafely(FilePath(), writer.Bytes());
}

}  // namespace core
