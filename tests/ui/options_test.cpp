// Names, groups and sounds.
#include <gtest/gtest.h>

#include "core/globals.h"
#include "core/language.h"
#include "support/recording_program.h"
#include "tests/support/desktop_test.h"
#include "tests/support/in_code_page.h"
#include "ui/options/option_values.h"

namespace options {
namespace {

using Texts = std::vector<std::string>;

class Options : public support::DesktopTest {
 protected:
  Options() {
    folder.Put("Lang.con", "Code,English\r\n1201,user|users|online\r\n1208,offline");
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
  EXPECT_EQ(Refusal("(Friends)"), kNameInUseText);
  EXPECT_EQ(Refusal("Anna"), 0);               // the user's own row
  EXPECT_EQ(Refusal("anna"), kNameInUseText);  // another name as far as this copy knows
  EXPECT_EQ(Refusal("Anna", true), kNameInUseText);
  users.lvUsers.Add({.text = "anna"});
  EXPECT_EQ(Refusal("Anna"), kNameInUseText);
}

TEST_F(Options, NamesNeedALetterOrDigitAndNoBar) {
  for (const char* name : {"", "   ", "/:@[`{", "\xE9\xE9", "|", "a|b"})
    EXPECT_EQ(Refusal(name), kNameUnusableText) << name;
  for (const char* name : {"a", "z", "A", "Z", "(0)", "_9", "\xE9t\xE9"}) EXPECT_EQ(Refusal(name), 0) << name;
}

TEST_F(Options, ProperCaseRaisesTheFirstCharacterOnly) {
  EXPECT_EQ(ProperCase("jOHN smITH"), "John smith");
  EXPECT_EQ(ProperCase("\xE9T\xC9"), "\xC9t\xE9");
  EXPECT_EQ(ProperCase("\xDFX"), "\xDFx");
}

TEST_F(Options, DoubleByteCharactersAreNeitherLatinLettersNorBars) {
  const support::InCodePage japanese(932);
  EXPECT_EQ(ProperCase("\x82\x81\x82\x60Z\x83\x5A"), "\x82\x60\x82\x81z\x83\x5A");
  EXPECT_EQ(Refusal("\x83\x41\x83\x5A"), kNameUnusableText);
  EXPECT_EQ(Refusal("\x83|1"), 0);
  const std::vector<Group> groups{{"\x83|", {"\x83\x60", "\x83|"}}};
  EXPECT_EQ(GroupsOf(LinesOf(groups)), groups);
}

TEST_F(Options, DropsUnterminatedMembersAndEmptyGroups) {
  const std::vector<Group> groups{{"F", {"anna", "bob"}}, {"G", {}}, {"H", {"", "x"}}};
  EXPECT_EQ(GroupsOf({"F|anna|bob|carla", "G|", "nothing", "H||x|"}), groups);
  EXPECT_EQ(LinesOf(groups), (Texts{"F|anna|bob|", "H||x|"}));
}

TEST_F(Options, SoundsHaveKeysThatEndInWav) {
  EXPECT_EQ(SoundsOf({"chime.wav", "ALERT.WAV"}),
            (std::vector<Sound>{{"(S)", ""}, {"(B)", ""}, {"chime.wav", "chime.wav"}, {"ALERT.WAV.wav", "ALERT.WAV"}}));
}

TEST_F(Options, AreAppliedInThisOrderAndSavedEvenWithoutTheNetwork) {
  users.AddUser("Bob");
  program.onOpenSocket = [] { throw core::RuntimeError(10048, "In use"); };
  const auto write = [](const char* what) { return [what] { support::Record(what); }; };
  ApplySets(program, {write("language"), write("user"), write("others")});
  EXPECT_EQ(support::Desktop().events, (Texts{"language", "close Anna", "user", "open Anna",
                                              "box offline: 10048: In use", "others", "restore main"}));
  EXPECT_EQ(users.lvUsers.FindText("Bob"), nullptr);
  EXPECT_NE(folder.Get("User.ini").find("\"Anna\""), std::string::npos);
}

}  // namespace
}  // namespace options
