// Every window: in every language, and when the system refuses to create windows.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "core/event_loop.h"
#include "core/globals.h"
#include "core/message_box.h"
#include "support/object_count.h"
#include "support/failing_desktop.h"
#include "support/recording_network.h"
#include "support/recording_program.h"
#include "support/window_probe.h"
#include "tests/support/error_of.h"
#include "tests/windows/box_answers.h"
#include "ui/conversation/open_windows.h"
#include "ui/main/frm_about.h"
#include "ui/main/frm_main.h"
#include "ui/main/frm_splash.h"
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

// The name of a control for screen readers: its own text or the label before it; for a toolbar, the alphabetically
// first name of its buttons, which is empty if any name is.
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

class Desk {
 public:
  Desk() { users.ClearlvUsers(); }
  ~Desk() { Close(); }

  const std::vector<std::pair<const char*, std::function<void()>>> openings{
      {"frmMain", [this] { Load<mainwindow::FrmMain>(users, messenger, mainwindow::MainCommands{}); }},
      {"frmSplash", [this] { Load<mainwindow::FrmSplash>(); }},
      {"frmChat", [this] { windows.StartChat("anna|"); }},
      {"frmCom", [this] { windows.OpenComposer("anna|"); }},
      {"frmPop", [this] { windows.ShowAlert("hello", "anna", 0); }},
      {"frmAbout", [this] { Load<mainwindow::FrmAbout>(); }},
      {"frmSave", [this] { Load<toolkit::FrmSave>(); }},
      {"frmOpt", [this] { Load<options::FrmOpt>(program, [] {}); }},
  };

  void Close() {
    forms.clear();
    for (const auto& [className, open] : openings)
      for (const HWND window : support::WindowsOf(className)) ::DestroyWindow(window);
    core::RunPendingEvents();
    LOGFONTA font{};  // shared by all windows: a link control may delete its font
    EXPECT_NE(::GetObjectA(toolkit::DialogFont(), sizeof font, &font), 0);
  }

 private:
  template <class Form, class... Arguments>
  void Load(Arguments&&... arguments) {
    const auto form = std::make_shared<Form>(std::forward<Arguments>(arguments)...);
    form->Load();
    if constexpr (requires { form->CreateContents(); }) form->CreateContents();
    forms.push_back(form);
  }

  mainwindow::UserRoster users;
  support::RecordingPort port;
  net::Messenger messenger{port};
  support::RecordingProgram program;
  conversation::OpenWindows windows{users, {users.lvUsers, [] { return std::string(); }}, messenger};
  std::vector<std::shared_ptr<toolkit::Window>> forms;
};

// Opens all windows; returns the names of their tab stops.
std::multiset<std::string> NamesInEveryWindow() {
  Desk desk;
  std::multiset<std::string> names;
  for (const auto& [className, open] : desk.openings) {
    open();
    ::EnumChildWindows(support::WindowsOf(className).at(0), TakeName, reinterpret_cast<LPARAM>(&names));
  }
  const HWND main = support::WindowsOf("frmMain").at(0), tools = support::ChildrenOf(main, TOOLBARCLASSNAMEA).at(0);
  ::SetWindowPos(main, nullptr, 0, 0, 1, 1, SWP_NOZORDER);
  EXPECT_EQ(::SendMessageA(tools, TB_GETROWS, 0, 0), 1) << "the buttons stay in one line down to the least width";
  const HWND options = support::WindowsOf("frmOpt").at(0), page = support::ChildrenOf(options, "picOpt").at(0);
  for (const std::string& colour : support::RowTexts(support::ChildrenOf(page, WC_LISTVIEWA).at(0)))
    names.insert(colour);
  return names;
}

TEST(EveryWindow, NamesEveryControlInEveryLanguage) {
  support::SetLanguage("English");
  const auto english = NamesInEveryWindow();
  EXPECT_EQ(english.count("Yellow"), 1u);
  for (const char* language : {"Fran\xE7\x61is", "Deutsch", "Espa\xF1ol"}) {
    support::SetLanguage(language);
    const auto names = NamesInEveryWindow();
    EXPECT_EQ(core::gLangError, 0) << language << " lacks a text";
    EXPECT_EQ(names.size(), english.size());
    EXPECT_EQ(names.count("Yellow"), 0u) << language;
  }
}

using support::FailOneCreation;

// Detects leaks of GDI and USER objects. The first round is not counted, since it may create permanent objects. A leak
// of one object per round would add as many as there are rounds; half of that is tolerated for fluctuations of Wine.
template <class Round>
void ExpectNothingLeft(int rounds, Round round) {
  round();
  const toolkit::ObjectCount before = toolkit::CountObjects();
  for (int i = 0; i < rounds; ++i) round();
  const toolkit::ObjectCount after = toolkit::CountObjects();
  EXPECT_LT(after.gdi, before.gdi + rounds / 2);
  EXPECT_LT(after.user, before.user + rounds / 2);
}

// A window that cannot be created completely leaves nothing behind, and opens when windows can be created again.
TEST(EveryWindow, OpensCompletelyOrFailsCleanly) {
  support::SetLanguage("English");
  const support::BoxAnswers answers;
  Desk desk;
  for (const auto& [className, open] : desk.openings) {
    const bool isAlert = className == std::string("frmPop");
    for (int before = 0; before == 0 || FailOneCreation::What() != FailOneCreation::Kind::Nothing; ++before) {
      SCOPED_TRACE(className + std::string(", refused after ") + std::to_string(before));
      const long error = [&] {
        const FailOneCreation refused(before);
        return support::ErrorOf(open);
      }();
      EXPECT_TRUE(error == 7 || (error == 0 && FailOneCreation::What() != FailOneCreation::Kind::Menu)) << error;
      EXPECT_EQ(support::WindowsOf(className).empty(), error != 0);
      core::ShowPostedBoxes();
      EXPECT_EQ(support::BoxAnswers::Texts(), std::vector<std::string>(isAlert && error != 0 ? 1 : 0, "hello"));
      support::BoxAnswers::Texts().clear();
      desk.Close();
    }
  }
  ExpectNothingLeft(20, [&desk] {
    for (const auto& [className, open] : desk.openings) open();
    desk.Close();
  });
  for (const int left : {100, 10000}) {
    const support::FewGdiObjects few(left);  // with none, some rich edit controls divide by zero
    for (const auto& [className, open] : desk.openings) {
      EXPECT_TRUE(support::ErrorOf(open) == 0 || left == 100);
      for (const HWND window : support::WindowsOf(className)) ::ShowWindow(window, SW_SHOWNA);
    }
    desk.Close();
  }
}

}  // namespace
