// Every window in every language.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "core/files.h"
#include "core/globals.h"
#include "support/recording_network.h"
#include "support/recording_program.h"
#include "support/window_probe.h"
#include "ui/conversation/open_windows.h"
#include "ui/main/frm_about.h"
#include "ui/main/frm_main.h"
#include "ui/options/frm_opt.h"
#include "ui/toolkit/save/frm_save.h"
#include "ui/toolkit/screen.h"

namespace {

std::string ToolText(HWND toolbar, int index) {
  TBBUTTON button{};
  ::SendMessageA(toolbar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
  char text[100] = "";
  ::SendMessageA(toolbar, TB_GETBUTTONTEXTA, static_cast<WPARAM>(button.idCommand), reinterpret_cast<LPARAM>(text));
  return text;
}

// What screen readers say of a control: its own text, or the label before it; of a toolbar, the least of its buttons.
std::string NameOf(HWND control) {
  std::string name = support::TextOf(control);
  char className[100] = "";
  ::GetClassNameA(control, className, sizeof className);
  if (className == std::string(TOOLBARCLASSNAMEA)) {
    name = ToolText(control, 0);
    for (int i = static_cast<int>(::SendMessageA(control, TB_BUTTONCOUNT, 0, 0)); --i > 0;)
      name = std::min(name, ToolText(control, i));
    return name;
  }
  const HWND before = ::GetWindow(control, GW_HWNDPREV);
  ::GetClassNameA(before, className, sizeof className);
  return name.empty() && className == std::string("Static") ? support::TextOf(before) : name;
}

BOOL CALLBACK TakeName(HWND control, LPARAM names) {
  if (!(::GetWindowLongPtrA(control, GWL_STYLE) & WS_TABSTOP)) return TRUE;
  const std::string name = NameOf(control);
  EXPECT_FALSE(name.empty()) << ::GetDlgCtrlID(control) << " of " << support::TextOf(::GetParent(control));
  reinterpret_cast<std::multiset<std::string>*>(names)->insert(name);
  return TRUE;
}

// Opens all windows; the names of what Tab visits in them.
std::multiset<std::string> NamesInEveryWindow() {
  mainwindow::UserRoster users;
  support::RecordingPort port;
  net::Messenger messenger{port};
  support::RecordingProgram program;
  conversation::OpenWindows windows{users, {users.lvUsers, [] { return std::string(); }}, messenger};
  users.ClearlvUsers();
  const auto main = std::make_shared<mainwindow::FrmMain>(users, messenger, mainwindow::MainCommands{});
  main->Load();
  main->CreateContents();
  windows.StartChat("anna|");
  windows.OpenComposer("anna|");
  windows.ShowAlert("hello", "anna", 0);
  const auto about = std::make_shared<mainwindow::FrmAbout>();
  about->Load();
  const auto save = std::make_shared<toolkit::FrmSave>();
  save->Load();
  EXPECT_EQ(save->Text(), toolkit::Caption(6001, "Save File").Text(true)) << "without a title of its own";
  const auto options = std::make_shared<options::FrmOpt>(program, [] {});
  options->Load();
  std::multiset<std::string> names;
  for (const char* window : {"frmMain", "frmChat", "frmCom", "frmPop", "frmAbout", "frmSave", "frmOpt"})
    ::EnumChildWindows(support::WindowsOf(window).at(0), TakeName, reinterpret_cast<LPARAM>(&names));
  const HWND swatches = support::ChildrenOf(support::ChildrenOf(options->hwnd(), "picOpt").at(0), WC_LISTVIEWA).at(0);
  for (const std::string& colour : support::RowTexts(swatches)) names.insert(colour);
  ::DestroyWindow(about->hwnd());
  return names;
}

TEST(EveryWindow, NamesEveryControlInEveryLanguage) {
  support::Speak("English");
  const auto english = NamesInEveryWindow();
  EXPECT_EQ(english.count("Yellow"), 1u);
  EXPECT_EQ(english.count("Conversation"), 1u);
  for (const char* language : {"Fran\xE7\x61is", "Deutsch", "Espa\xF1ol"}) {
    support::Speak(language);
    const auto names = NamesInEveryWindow();
    EXPECT_EQ(core::gLangError, 0) << language << " lacks a text";
    EXPECT_EQ(names.size(), english.size());
    EXPECT_EQ(names.count("Yellow"), 0u) << language;
  }
  LOGFONTA font{};  // of all windows: a link control may take along the font that it was given when it ends
  EXPECT_NE(::GetObjectA(toolkit::DialogFont(), sizeof font, &font), 0);
}

TEST(EveryWindow, LanguageFilesMayLackWhatNobodySees) {
  const std::string path = core::InProgramDirectory("Lang.con"), whole = core::ReadFile(path);
  const std::size_t line = whole.find("3003,");
  core::WriteFileSafely(path, whole.substr(0, line) + whole.substr(whole.find("3101,")));
  support::Speak("Deutsch");
  core::WriteFileSafely(path, whole);
  EXPECT_EQ(NamesInEveryWindow().count("Conversation"), 1u);
  EXPECT_EQ(core::gLangError, 0);
}

}  // namespace
