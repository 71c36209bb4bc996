#include "core/settings.h"

#include <utility>

#include "core/globals.h"
#include "core/language.h"
#include "tests/support/desktop_test.h"
#include "tests/support/fake_roster.h"
#include "tests/support/recording_program.h"

namespace core {
namespace {

using support::Desktop;
using support::ErrorOf;

constexpr char kLang[] = "Code,English,Deutsch\r\n1001,one,eins\r\n";

std::string DefaultFile(const std::string& chatPlace = "0,0,0,0") {
  return "\"English\"\r\n0\r\n0,0,2505,4605\r\n\"anna\",\"0\",\"4\",\"(B)\",\"0\"\r\n" + chatPlace +
         "\r\n\"0\"\r\n\"\"\r\n\"0\"\r\n\"\"\r\n";
}

constexpr char kFull[] =
    "\"Deutsch\"\r\n2\r\n-30,15,3000,6000\r\n\"Anna B\",255,1,\"ding.wav\",1\r\n1,2,3,70000\r\n1\r\n\"bob\"\r\n2\r\n"
    "\"F|anna|\"\r\n\"G|bob|cy|\"\r\n";

class SettingsTest : public support::DesktopTest {
 protected:
  SettingsTest() { folder.Put("Lang.con", kLang); }
  support::FakeRoster roster;
  support::RecordingProgram program{roster};
};

TEST_F(SettingsTest, AFirstStartWritesTheDefaultFileAndReadsIt) {
  ReadSets(program);
  EXPECT_EQ(folder.Get("User.ini"), DefaultFile());
  EXPECT_EQ(gUserName, "anna");
  EXPECT_EQ(program.place, (WindowPlace{0, 0, 2505, 4605}));
  EXPECT_EQ(roster.calls, "FG");
  EXPECT_TRUE(roster.groups.empty());
}

TEST_F(SettingsTest, ReadsEveryRecord) {
  folder.Put("User.ini", kFull);
  roster.groups = {"stale|x|"};
  ReadSets(program);
  EXPECT_EQ(gLanguage, "Deutsch");
  EXPECT_EQ(GetText(1001), "eins");
  EXPECT_EQ(gAlertHeight, 2);
  EXPECT_EQ(program.place, (WindowPlace{-30, 15, 3000, 6000}));
  EXPECT_EQ(gUserName, "Anna B");
  EXPECT_EQ(gColour, 255);
  EXPECT_EQ(gPopPos, 1);
  EXPECT_EQ(gSound, "ding.wav");
  EXPECT_EQ(gRunAtLogon, 1);
  EXPECT_EQ(gChatHeight, 70000);
  EXPECT_EQ(roster.calls, "BFG");  // blocked names do not outlive the run that blocked them
  EXPECT_TRUE(roster.blocked.empty());
  EXPECT_EQ(roster.groups, (std::vector<std::string>{"F|anna|", "G|bob|cy|"}));
  EXPECT_EQ(folder.Get("User.ini"), kFull);
}

TEST_F(SettingsTest, WritesWhatItReads) {
  folder.Put("User.ini", kFull);
  ReadSets(program);
  gCurName = std::exchange(gUserName, "not the name in use");
  roster.blocked = {" bob "};
  SaveSets(program);
  EXPECT_EQ(folder.Get("User.ini"), kFull);
  EXPECT_EQ(Desktop().events.back(), "restore main");
}

// Every failure ends in the default file for the next start, and what was read before it stays.
TEST_F(SettingsTest, DamageBringsTheDefaultFile) {
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
  } rows[] = {
      {"empty", "", "English", "", 1},
      {"cut after the language", full.substr(0, 11), "Deutsch", "", 1},
      {"left beyond 16 bits", with("-30,", "40000,"), "Deutsch", "", 1},
      {"a quote inside the name", with("Anna B", "An\"na"), "Deutsch", "An", 1},
      {"colour no number", with("255", "red"), "Deutsch", "Anna B", 1},
      {"position beyond 16 bits", with(",1,\"ding", ",99999,\"ding"), "Deutsch", "Anna B", 1},
      {"a field too many", with(",255", ",255,7"), "Deutsch", "Anna B", 1, "1,1,2,3"},
      {"fewer groups than counted", with("2\r\n\"F", "3\r\n\"F"), "Deutsch", "Anna B", 2, "1,2,3,70000"},
      {"group count no number", with("2\r\n\"F", "many\r\n\"F"), "Deutsch", "Anna B", 0, "1,2,3,70000"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    support::ResetDesktop();
    roster = {};
    roster.groups = {"stale|x|"};
    folder.Put("User.ini", row.file);
    ReadSets(program);
    EXPECT_EQ(folder.Get("User.ini"), DefaultFile(row.chatPlace));
    EXPECT_EQ(gLanguage, row.language);
    EXPECT_EQ(gUserName, row.name);
    EXPECT_EQ(roster.groups.size(), row.groups);
    EXPECT_TRUE(Desktop().boxes.empty() && Desktop().posted.empty() && folder.Get("Log.txt").empty());
  }
}

TEST_F(SettingsTest, ABadLanguageFileCostsTheSettings) {
  folder.Put("User.ini", kFull);
  folder.Put("Lang.con", "Code,English,Deutsch\r\n\r\n");
  ReadSets(program);
  EXPECT_EQ(folder.Get("User.ini"), DefaultFile());
  EXPECT_EQ(gUserName, "");
}

TEST_F(SettingsTest, WhatCannotBeWrittenReachesTheCaller) {
  folder.PutFolder("User.ini");
  EXPECT_EQ(ErrorOf([&] { ReadSets(program); }), 75);
  EXPECT_EQ(ErrorOf([&] { SaveSets(program); }), 75);
}

}  // namespace
}  // namespace core
