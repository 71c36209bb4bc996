#include "core/language.h"

#include "core/globals.h"
#include "tests/support/desktop_test.h"

namespace core {
namespace {

using support::Desktop;
using support::ErrorOf;

// Loads a text into a table as LoadLang does; 0 or the number of the failure.
long Load(LanguageTable& table, std::string_view file, std::string_view language) {
  return ErrorOf([&] {
    table.ReadLangNames(file);
    table.ReadTexts(file, table.FindLangCol(language));
  });
}

std::string TextOf(LanguageTable& table, int code) { return std::string(table.Find(code).value_or("(unknown)")); }

std::string Lines(int count) {
  std::string file = "Code,English\r\n";
  for (int code = 1; code <= count; ++code) file += std::to_string(code) + ",text\r\n";
  return file;
}

TEST(LanguageTable, UsesTheColumnOfTheLanguage) {
  const struct {
    std::string file;
    const char* language;
    long error;
    int code;
    const char* text;
  } rows[] = {
      {"Code,English,Deutsch\r\n1001,one, eins \r\n 1002 ,two,zwei,more", "Deutsch", 0, 1001, " eins "},
      {"Code,English,Deutsch\r\n1001,one, eins \r\n 1002 ,two,zwei,more", "Deutsch", 0, 1002, "zwei"},
      {"Code,English,Deutsch\r\n1001,one,eins\r\n1002,two\ncut,zwei\r\n", "Deutsch", 13, 1002, "(unknown)"},
      {"Code,A,B,C\r\n1,a1,b1,c1\r\n2,a2,b2\r\n3,a3\r\n", "C", 0, 2, ""},  // one field short: emptied
      {"Code,A,B,C\r\n1,a1,b1,c1\r\n2,a2,b2\r\n3,a3\r\n", "C", 0, 3, ""},  // still emptied
      {"Code,A,B,C\r\n1,a1,b1,c1\r\n3,a3\r\n", "C", 0, 3, "c1"},  // two fields short: repeats the previous line
      {"Code,English,2,3,4,5,6,7,8,9\r\n1,a,b,c,d,e,f,g,h,i\r\n", "9", 0, 1, "i"},
      {"Code,English\r\n1,a,b,c,d,e,f,g,h,i,j\r\n", "English", 9, 1, "(unknown)"},
      {Lines(201), "English", 0, 201, "text"},
      {Lines(202), "English", 9, 202, "(unknown)"},
      {"Code,English\r\n1,one\r\n\r\n", "English", 13, 2, "(unknown)"},  // an empty line, also the last one
      {"Code,English\r\n40000,one\r\n", "English", 6, 40000, "(unknown)"},
      {"Code,English\n1,one\n2,two\n", "English", 0, 2, "two"},
      {"Code,English,,Deutsch\r\n1,one,,eins\r\n", "English", 0, 1, "one"},
      {"Code,English", "English", 0, 1, "(unknown)"},
  };
  for (const auto& row : rows) {
    LanguageTable table;
    EXPECT_EQ(Load(table, row.file, row.language), row.error) << row.file;
    EXPECT_EQ(TextOf(table, row.code), row.text) << row.file;
  }
  LanguageTable table;
  EXPECT_EQ(TextOf(table, 0), "") << "an empty table answers to code 0";
  Load(table, "Code,English,,Deutsch\r\n", "English");  // names end at an empty field
  for (const char* name : {"Deutsch", "", "english"}) EXPECT_EQ(table.FindLangCol(name), 0u) << name;
}

TEST(LanguageTable, SearchesFromItsCursor) {
  LanguageTable table;
  ASSERT_EQ(Load(table, "Code,English\r\n1,first\r\n2,two\r\n1,second\r\n", "English"), 0);
  EXPECT_EQ(TextOf(table, 1), "first");
  EXPECT_EQ(TextOf(table, 2), "two");
  EXPECT_EQ(TextOf(table, 1), "second");
  EXPECT_EQ(TextOf(table, 9), "(unknown)");
  EXPECT_EQ(TextOf(table, 1), "second");  // a miss leaves the cursor where it was
  ASSERT_EQ(Load(table, "Code,English\r\n1,alone\r\n", "English"), 0);
  EXPECT_EQ(TextOf(table, 1), "alone");
}

class LanguageTest : public support::DesktopTest {};

TEST_F(LanguageTest, WithoutEnglishItReportsAndFails) {
  for (const char* file : {"Code,Deutsch\r\n1,eins\r\n", "", "Code"}) {
    folder.Put("Lang.con", file);
    gLanguage = "Espa\xF1ol";
    EXPECT_EQ(ErrorOf(LoadLang), 13);
    EXPECT_EQ(Desktop().boxes.back().text, "Error reading language files. No languages available");
  }
  std::string line = "Cannot find default language or English;";
  EXPECT_EQ(Log(), line + line + line);
}

TEST_F(LanguageTest, TheFirstMissingCodeIsReportedOnce) {
  folder.Put("Lang.con", "Code,English\r\n1001,one\r\n");
  LoadLang();
  EXPECT_TRUE(CaptionsFromTable());
  EXPECT_EQ(GetText(4242), "");
  EXPECT_EQ(GetText(4243), "");
  ASSERT_EQ(Desktop().posted.size(), 1u);
  EXPECT_EQ(Desktop().posted[0].text, "Error reading language files. Cannot find code 4242");
  EXPECT_EQ(Desktop().posted[0].title, "Language Error");
  EXPECT_EQ(Desktop().posted[0].icon, BoxIcon::Information);
  EXPECT_EQ(folder.Get("Log.txt"), "\"15/11/2026 18:46:02 Cannot find text code 4242\"\r\n");
  LoadLang();
  EXPECT_FALSE(CaptionsFromTable());  // a later load does not reset it
  EXPECT_EQ(GetText(1001), "one");
}

TEST_F(LanguageTest, StatesUseTheTextsOfTheFileEvenEmptyOnes) {
  folder.Put("Lang.con", "Code,English\r\n8203,Here\r\n8205,\r\n8207,alerts\r\n8208,nothing\r\n");
  LoadLang();
  LoadLangConsts();
  EXPECT_EQ(gStateNames, (std::array<std::string, 3>{"Here", "", ""}));
  EXPECT_EQ(gStateHelps, (std::array<std::string, 3>{"", "alerts", "nothing"}));
  ASSERT_EQ(Desktop().posted.size(), 1u);
  EXPECT_EQ(Desktop().posted[0].text, "Error reading language files. Cannot find code 8204") << "in the file's order";
}

TEST_F(LanguageTest, AnInvalidFileKeepsThePreviousTexts) {
  folder.Put("Lang.con", "Code,English,Deutsch\r\n1,one,eins\r\n2,two,zwei\r\n");
  LoadLang();
  folder.Put("Lang.con", "Code,English,Deutsch\r\n1,one,eins\r\n\r\n");
  EXPECT_EQ(ErrorOf([] { ChangeLang("Deutsch"); }), 13);
  EXPECT_EQ(gLanguage + GetText(1) + GetText(2), "Englishonetwo");
  folder.Put("Lang.con", "Code,English,Deutsch\r\n1,uno,eins\r\n");
  ChangeLang("Italiano");
  EXPECT_EQ(gLanguage + GetText(1), "Englishuno");
  gLangCount = 0;
  folder.Put("Lang.con", "Code,English\r\n1,due\r\n\r\n");
  EXPECT_EQ(ErrorOf(LoadLang), 13);
  EXPECT_EQ(GetText(1), "due") << "the first load keeps the texts before the failure";
}

}  // namespace
}  // namespace core
