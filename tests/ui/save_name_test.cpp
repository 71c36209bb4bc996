#include "ui/toolkit/save/save_name.h"

#include <gtest/gtest.h>

#include "tests/support/in_code_page.h"

namespace toolkit {
namespace {

constexpr char kFolder[] = "C:\\Users\\anna";

std::string Decided(std::string_view typed, std::string_view extension = ".txt", std::string_view folder = kFolder) {
  const auto isFolder = [](const std::string& path) {
    return path == "C:\\Users\\anna\\talks" || path == "C:\\Users\\anna\\.." || path == "D:\\" || path == "C:\\temp";
  };
  constexpr const char* names[] = {"none", "filter ", "go to ", "save "};
  const SaveDecision decision = DecideSave(typed, folder, extension, isFolder);
  return names[static_cast<int>(decision.action)] + decision.text;
}

TEST(SaveName, TheTypedNameDecides) {
  const std::pair<const char*, const char*> kRows[] = {
      {"   ", "none"},
      {" *.rtf ", "filter *.rtf"},
      {"talks", "go to C:\\Users\\anna\\talks\\"},
      {"..", "go to C:\\Users\\anna\\..\\"},
      {"D:", "go to D:\\"},
      {"/temp", "go to C:\\temp\\"},
      {" tea ", "save C:\\Users\\anna\\tea.txt"},
      {"*tea", "save C:\\Users\\anna\\*tea.txt"},
      {"tea.TXT", "save C:\\Users\\anna\\tea.TXT"},
      {"txt", "save C:\\Users\\anna\\txt.txt"},
      {"E:\\tea", "save E:\\tea.txt"},
      {"E:tea", "save E:\\tea.txt"},
      {"c:tea", "save C:\\Users\\anna\\tea.txt"},
      {"\\tea", "save C:\\tea.txt"},
      {"\\\\server\\share\\tea", "save \\\\server\\share\\tea.txt"},
  };
  for (const auto& [typed, decision] : kRows) EXPECT_EQ(Decided(typed), decision);
  EXPECT_EQ(Decided("tea.txt", ".rtf"), "save C:\\Users\\anna\\tea.txt.rtf");
  EXPECT_EQ(Decided("tea", ".txt", "C:\\"), "save C:\\tea.txt");
  EXPECT_EQ(Decided("\\tea", ".txt", "\\\\server\\share\\deep\\down"), "save \\\\server\\share\\tea.txt");
}

TEST(SaveName, PathsAreSplitByCharacters) {
  const support::InCodePage japanese(932);
  EXPECT_EQ(Decided("\x83\x5C", ".txt", "C:\\\x83\x5C"), "save C:\\\x83\x5C\\\x83\x5C.txt");
  EXPECT_EQ(FolderOf(PathSteps("C:\\\x83\x5C\\b"), 2), "C:\\\x83\x5C\\");
  EXPECT_EQ(PathSteps("\\\\\x83\x5C\\share\\a").size(), 2u);
}

TEST(SaveName, AnotherTypeSwitchesTheExtensionShownSoFar) {
  for (const auto& [typed, switched] : {std::pair{"TEA.TXT", "TEA.rtf"}, {"tea.doc", "tea.doc"}, {"t", "t"}})
    EXPECT_EQ(SwitchExtension(typed, "*.txt", ExtensionOf("Rich Text (*.rtf)")), switched);
  for (const auto& [name, shown] : {std::pair{"t.txt.TXT", true}, {"tea.tvxt", false}, {"a.rtf", true}})
    EXPECT_EQ(MatchesPattern(name, "*.doc; *.txt;?.r*f*"), shown) << name;
}

}  // namespace
}  // namespace toolkit
