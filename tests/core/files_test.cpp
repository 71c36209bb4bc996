// Records and settings, and the entry for the start at logon.
#include "core/settings.h"

#include <string>
#include <utility>
#include <vector>

#include "core/globals.h"
#include "core/language.h"
#include "core/log.h"
#include "core/start_up.h"
#include "core/record_io.h"
#include "tests/support/desktop_test.h"
#include "support/recording_program.h"

namespace core {
namespace {

using support::Desktop;
using support::ErrorOf;

constexpr char kLang[] = "Code,English,Deutsch\r\n1001,one,eins\r\n1201,a|b|c,a|b|c\r\n";

std::string DefaultFile(const std::string& chatPlace = "0,0,0,0") {
  return "\"English\"\r\n0\r\n0,0,2505,4605\r\n\"anna\",\"0\",\"4\",\"(B)\",\"0\"\r\n" + chatPlace +
         "\r\n\"0\"\r\n\"\"\r\n\"0\"\r\n\"\"\r\n";
}

constexpr char kFull[] =
    "\"Deutsch\"\r\n2\r\n-30,15,3000,6000\r\n\"Anna B\",255,1,\"ding.wav\",1\r\n1,2,3,70000\r\n1\r\n\"b'b\"\r\n2\r\n"
    "\"F|anna|\"\r\n\"G|bob|cy|\"\r\n";

class SettingsTest : public support::DesktopTest {
 protected:
  SettingsTest() { folder.Put("Lang.con", kLang); }
  support::RecordingProgram program;
  mainwindow::UserRoster& roster = program.users;
};

TEST_F(SettingsTest, AFirstStartWritesTheDefaultFileAndReadsIt) {
  ReadSets(program);
  EXPECT_EQ(folder.Get("User.ini"), DefaultFile());
  EXPECT_EQ(gUserName, "anna");
  EXPECT_EQ(program.place, (WindowBounds{0, 0, 2505, 4605}));
  EXPECT_TRUE(roster.GroupLines().empty());
}

TEST_F(SettingsTest, ReadsEveryRecordAndWritesWhatItReads) {
  folder.Put("User.ini", kFull);
  roster.SetGroupLines({"stale|x|"});
  ReadSets(program);
  EXPECT_EQ(folder.Get("User.ini"), kFull);
  EXPECT_EQ(GetText(1001), "eins");
  EXPECT_EQ(program.place, (WindowBounds{-30, 15, 3000, 6000}));
  EXPECT_EQ((WindowBounds{gChatLeft, gChatTop, gChatWidth, gChatHeight}), (WindowBounds{1, 2, 3, 70000}));
  EXPECT_TRUE(roster.BlockedNames().empty()) << "blocked names do not outlive the run that blocked them";
  EXPECT_EQ(roster.GroupLines(), (std::vector<std::string>{"F|anna|", "G|bob|cy|"}));
  EXPECT_TRUE(roster.HasRow("(G)"));
  gCurName = std::exchange(gUserName, "not the name in use");
  roster.AddBlocked(" b\"b ");
  SaveSets(program);
  EXPECT_EQ(folder.Get("User.ini"), kFull);
  EXPECT_EQ(Desktop().events.back(), "restore main");
}

// Every failure writes the default file for the next start, and keeps what was read before it.
TEST_F(SettingsTest, DamageRestoresTheDefaultFile) {
  const std::string full = kFull;
  const auto with = [&](std::string_view part, std::string_view replacement) {
    std::string damaged = full;
    damaged.replace(damaged.find(part), part.size(), replacement);
    return damaged;
  };
  const struct {
    const char* what;
    std::string file;
    std::string language, name;
    std::size_t groups;
    std::string chatPlace = "0,0,0,0";  // read before the failure, so the default file holds it
    std::string texts = kLang;
  } rows[] = {
      {"empty", "", "English", "", 1},
      {"cut after the language", full.substr(0, 11), "Deutsch", "", 1},
      {"a quote inside the name", with("Anna B", "An\"na"), "Deutsch", "An", 1},
      {"a colour that is no number", with("255", "red"), "Deutsch", "Anna B", 1},
      {"fewer groups than counted", full.substr(0, full.find("2\r\n\"F")) + "3\r\n\"F|\"\r\n\"G|\"\r\n", "Deutsch",
       "Anna B", 2, "1,2,3,70000"},
      {"group count no number", with("2\r\n\"F", "many\r\n\"F"), "Deutsch", "Anna B", 0, "1,2,3,70000"},
      {"a bad language file", full, "Deutsch", "", 1, "0,0,0,0", "Code,English,Deutsch\r\n\r\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    support::ResetDesktop();
    roster.SetGroupLines({"stale|x|"});
    folder.Put("User.ini", row.file);
    folder.Put("Lang.con", row.texts);
    ReadSets(program);
    EXPECT_EQ(folder.Get("User.ini"), DefaultFile(row.chatPlace));
    EXPECT_EQ(gLanguage, row.language);
    EXPECT_EQ(gUserName, row.name);
    EXPECT_EQ(roster.GroupLines().size(), row.groups);
    EXPECT_TRUE(Desktop().boxes.empty() && Desktop().posted.empty() && folder.Get("Log.txt").empty());
  }
}

// The fields, each followed by "|", read as texts (t) or numbers (n), up to the first error.
std::string FieldsOf(std::string_view bytes, std::string_view kinds) {
  RecordReader reader(bytes);
  std::string fields;
  const long error = ErrorOf([&] {
    for (const char kind : kinds) fields += (kind == 't' ? reader.Text() : std::to_string(reader.Int32())) + "|";
  });
  return error == 0 ? fields : fields + "error " + std::to_string(error);
}

// Commas and line ends are equivalent, so fields shift silently until a text is read as a number.
TEST(RecordReader, ReadsFieldByField) {
  const struct {
    std::string_view bytes, kinds, fields;
  } rows[] = {
      {"  \"a, b\" , bare text\r\n\"7\",8.5\n&H10\r\n\r\nlast", "ttnnnntt", "a, b|bare text|7|8|16|0|last|error 62"},
      {"1\r\n\"anna\",2,3\r\n4\r\n", "nnnnn", "1|0|2|3|4|"},
      {"\"jo\"e\",\"255\"\r\n", "ttt", "jo|e\"|255|"},
      {"anna,,\"\"", "ttt", "anna|||"},
      {"  ", "n", "error 62"},
      {"\"3000000000\"", "n", "error 6"},
      {"\"never closed\r\n", "t", "never closed\r\n|"},
  };
  for (const auto& row : rows) EXPECT_EQ(FieldsOf(row.bytes, row.kinds), row.fields) << row.bytes;
}

class RunAtLogonTest : public support::DesktopTest {};

TEST_F(RunAtLogonTest, TheEntryFollowsTheFlag) {
  for (const int flag : {0, 1, 2, -1}) SetRunAtLogon(static_cast<std::int16_t>(flag));
  EXPECT_EQ(Desktop().events, (std::vector<std::string>{"no run", "run " + folder.Path("Quillon")}));
}

}  // namespace
}  // namespace core
