// Names, groups, sounds, and how the choices become settings.
#include <gtest/gtest.h>

#include "core/globals.h"
#include "core/language.h"
#include "support/recording_program.h"
#include "tests/support/desktop_test.h"
#include "tests/support/in_code_page.h"
#include "ui/options/choices.h"
#include "ui/options/names.h"
#include "ui/options/sounds.h"

namespace options {
namespace {

class Options : public support::DesktopTest {
 protected:
  Options() {
    folder.Put("Lang.con", "Code,English\r\n1201,user|users|online\r\n1208,No network");
    core::LoadLang();
    core::gCurName = core::gUserName = "Anna";
    users.ClearlvUsers();
  }
  int Refusal(std::string_view name, bool ownNameIsTaken = false) { return RefusalOf(name, users, ownNameIsTaken); }
  support::RecordingProgram program;
  mainwindow::UserRoster& users = program.users;
};

TEST_F(Options, NamesInUseAreRefused) {
  for (const char* name : {"Anna", "Bob", "(Friends)"}) users.AddUser(name);
  EXPECT_EQ(Refusal("bob"), kNameInUseText);
  EXPECT_EQ(Refusal("(all)"), kNameInUseText);
  EXPECT_EQ(Refusal("(Friends)"), kNameInUseText);
  EXPECT_EQ(Refusal("Anna"), 0);               // the own row
  EXPECT_EQ(Refusal("anna"), kNameInUseText);  // another name as far as this copy knows
  EXPECT_EQ(Refusal("Anna", true), kNameInUseText);
  EXPECT_EQ(Refusal("Carla", true), 0);
  users.lvUsers.Add({.text = "anna"});
  EXPECT_EQ(Refusal("Anna"), kNameInUseText);
}

TEST_F(Options, NamesNeedALetterOrDigitAndNoBar) {
  for (const char* name : {"", "   ", "---", "\xE9\xE9", "|", "a|b"})
    EXPECT_EQ(Refusal(name), kNameUnusableText) << name;
  for (const char* name : {"a", "Z", "(1)", "_x", "John Smith", "\xE9t\xE9"}) EXPECT_EQ(Refusal(name), 0) << name;
}

TEST_F(Options, ProperCaseRaisesTheFirstCharacterOnly) {
  EXPECT_EQ(ProperCase("jOHN smITH"), "John smith");
  EXPECT_EQ(ProperCase("\xE9T\xC9"), "\xC9t\xE9");
  EXPECT_EQ(ProperCase("\xDFX"), "\xDFx");
  EXPECT_EQ(ProperCase(""), "");
}

TEST_F(Options, LettersOfTwoBytesAreNeitherLatinLettersNorBars) {
  const support::InCodePage japanese(932);
  EXPECT_EQ(ProperCase("\x82\x81\x82\x60Z\x83\x5A"), "\x82\x60\x82\x81z\x83\x5A");
  EXPECT_EQ(Refusal("\x83\x41\x83\x5A"), kNameUnusableText);
  EXPECT_EQ(Refusal("\x83|1"), 0);
  const std::vector<Group> groups{{"\x83|", {"\x83\x60", "\x83|"}}};
  EXPECT_EQ(GroupsOf(LinesOf(groups)), groups);
}

TEST_F(Options, OnlyClosedPiecesOfALineAreItsGroupAndEmptyGroupsAreNotKept) {
  const std::vector<Group> groups{{"F", {"anna", "bob"}}, {"G", {}}, {"H", {"", "x"}}};
  EXPECT_EQ(GroupsOf({"F|anna|bob|carla", "G|", "nothing", "H||x|"}), groups);
  EXPECT_EQ(LinesOf(groups), (std::vector<std::string>{"F|anna|bob|", "H||x|"}));
}

TEST_F(Options, SoundsHaveKeysThatEndInWav) {
  EXPECT_EQ(SoundsOf({"chime.wav", "ALERT.WAV"}),
            (std::vector<Sound>{{"(S)", ""}, {"(B)", ""}, {"chime.wav", "chime.wav"}, {"ALERT.WAV.wav", "ALERT.WAV"}}));
}

TEST_F(Options, ChoicesAreAppliedInOrder) {
  users.AddBlocked("Old");
  program.onOpenSocket = [] {
    EXPECT_EQ(core::gUserName, "Carla");
    EXPECT_EQ(core::gColour, 255);
    EXPECT_EQ(core::gLanguage, "Deutsch");
    EXPECT_EQ(core::gPopPos, 4);  // not yet
  };
  Apply({.language = "Deutsch",
         .name = "Carla",
         .colour = 255,
         .position = std::int16_t{2},
         .sound = "chime.wav",
         .runAtLogon = 1,
         .blocked = {"Bob", "Mallory"},
         .groups = {{"F", {"anna"}}, {"G", {}}}},
        program);
  EXPECT_EQ(support::Desktop().events, (std::vector<std::string>{"close Anna", "open Carla", "restore main"}));
  EXPECT_TRUE(users.HasRow("(F)"));
  EXPECT_EQ(folder.Get("User.ini"),
            "\"Deutsch\"\r\n0\r\n300,150,2505,4605\r\n\"Carla\",255,2,\"chime.wav\",1\r\n0,0,0,0\r\n"
            "2\r\n\"Bob\"\r\n\"Mallory\"\r\n1\r\n\"F|anna|\"\r\n");
}

TEST_F(Options, ANetworkThatFailsStopsNothingElse) {
  program.onOpenSocket = [] { throw core::RuntimeError(10048, "Address already in use"); };
  Apply({.name = "Carla", .position = std::int16_t{1}, .blocked = {"Bob"}}, program);
  ASSERT_EQ(support::Desktop().boxes.size(), 1u);
  EXPECT_EQ(support::Desktop().boxes[0].text, "No network: 10048: Address already in use");
  EXPECT_EQ(core::gPopPos, 1);
  EXPECT_EQ(users.BlockedNames(), (std::vector<std::string>{"Bob"}));
  EXPECT_NE(folder.Get("User.ini"), "");
}

TEST_F(Options, SettingsThatCannotBeSavedAreInEffect) {
  folder.PutFolder("User.ini");
  EXPECT_EQ(support::ErrorOf([&] { Apply({.name = "Carla", .position = std::int16_t{1}}, program); }), 75);
  EXPECT_EQ(core::gUserName, "Carla");
  EXPECT_EQ(core::gPopPos, 1);
}

}  // namespace
}  // namespace options
