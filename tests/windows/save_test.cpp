// The save dialog as a real window over a folder made for it.
#include "ui/toolkit/save/frm_save.h"

#include <gtest/gtest.h>

#include <string>

#include "core/language.h"
#include "core/runtime_error.h"
#include "support/temporary_folder.h"
#include "tests/windows/box_answers.h"

namespace toolkit {
namespace {

constexpr int kFolders = 102, kFiles = 103, kName = 104, kType = 105;

class SaveDialog : public testing::Test {
 protected:
  SaveDialog() {
    core::LoadLang();
    files.PutFolder("inner");
    for (const char* name : {"tea.txt", "\xC9t\xE9.txt", "cake.rtf"}) files.Put(name, "x");
    form->Load();
    form->SetLocation(folder + "\\");
  }
  ~SaveDialog() override {
    if (form->hwnd()) ::DestroyWindow(form->hwnd());
  }

  HWND Item(int id) const { return ::GetDlgItem(form->hwnd(), id); }
  std::string Name() const { return TextOf(Item(kName)); }
  void Type(const std::string& name) const { ::SetWindowTextA(Item(kName), name.c_str()); }
  void Tell(int id, int code) const {
    ::SendMessageA(form->hwnd(), WM_COMMAND, static_cast<WPARAM>(MAKELONG(id, code)),
                   reinterpret_cast<LPARAM>(Item(id)));
  }
  void Click(int button) const { Tell(button, BN_CLICKED); }
  void Choose(int id, int index, UINT select, int code) const {
    ::SendMessageA(Item(id), select, static_cast<WPARAM>(index), 0);
    Tell(id, code);
  }
  std::string Listed(int id) const {
    std::string all;
    for (int i = 0; i < ::SendMessageA(Item(id), LB_GETCOUNT, 0, 0); ++i) {
      char text[MAX_PATH] = "";
      ::SendMessageA(Item(id), LB_GETTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
      all += (all.empty() ? "" : "|") + std::string(text);
    }
    return all;
  }

  support::TemporaryFolder files;
  const std::string folder = files.Path();
  std::shared_ptr<FrmSave> form = std::make_shared<FrmSave>();
};

TEST_F(SaveDialog, ListsFollowPatternAndFolder) {
  EXPECT_EQ(Listed(kFiles), "\xC9t\xE9.txt|tea.txt");
  EXPECT_TRUE(Listed(kFolders).ends_with("|inner"));
  EXPECT_EQ(::SendMessageA(Item(kFiles), LB_GETCURSEL, 0, 0), 0);

  Type("*.rtf");
  Click(IDOK);
  EXPECT_EQ(Listed(kFiles), "cake.rtf");
  EXPECT_TRUE(form->hwnd());

  Type("inner");
  Click(IDOK);
  EXPECT_EQ(Listed(kFiles), "");
  EXPECT_TRUE(Listed(kFolders).ends_with("|inner"));
  EXPECT_EQ(Name(), "");
  Type("..");
  Click(IDOK);
  EXPECT_EQ(Listed(kFiles), "cake.rtf");
}

TEST_F(SaveDialog, PickedNameAndTypeMakeTheResult) {
  Choose(kFiles, 1, LB_SETCURSEL, LBN_SELCHANGE);
  EXPECT_EQ(Name(), "tea.txt");
  Choose(kType, 1, CB_SETCURSEL, CBN_SELCHANGE);
  EXPECT_EQ(Name(), "tea.rtf");
  EXPECT_EQ(Listed(kFiles), "cake.rtf");
  Type("  new ");
  Click(IDOK);
  EXPECT_EQ(form->Result(), folder + "\\new.rtf");
  EXPECT_FALSE(form->hwnd());
}

TEST_F(SaveDialog, FoldersOpenByDoubleClickAndKeepTheName) {
  Type("no folder\\new");
  const auto count = ::SendMessageA(Item(kFolders), LB_GETCOUNT, 0, 0);
  Choose(kFolders, static_cast<int>(count) - 1, LB_SETCURSEL, LBN_DBLCLK);
  Click(IDOK);
  EXPECT_EQ(form->Result(), folder + "\\inner\\no folder\\new.txt");
}

TEST_F(SaveDialog, AMissingFolderIsReported) {
  EXPECT_THROW(form->SetLocation("Q:\\none\\"), core::RuntimeError);
  const auto count = ::SendMessageA(Item(kFolders), LB_GETCOUNT, 0, 0);
  ::RemoveDirectoryA((folder + "\\inner").c_str());
  const support::BoxAnswers answering;
  Choose(kFolders, static_cast<int>(count) - 1, LB_SETCURSEL, LBN_DBLCLK);
  EXPECT_EQ(Listed(kFiles), "\xC9t\xE9.txt|tea.txt");
  ::CreateDirectoryA((folder + "\\inner").c_str(), nullptr);
  form->SetLocation(folder + "\\inner\\");
  ::RemoveDirectoryA((folder + "\\inner").c_str());
  Type("*.doc");
  Click(IDOK);
  Choose(kType, 1, CB_SETCURSEL, CBN_SELCHANGE);
  EXPECT_EQ(support::BoxAnswers::Texts(), std::vector<std::string>(3, "This drive or folder cannot be opened."));
}

TEST_F(SaveDialog, EnterSavesAndEscapeCloses) {
  for (const WPARAM key : {WPARAM{VK_RETURN}, WPARAM{VK_ESCAPE}}) {
    form->Show();
    Type("new");
    ::SetFocus(Item(kName));
    EXPECT_TRUE(support::FilterKey(Item(kName), WM_KEYDOWN, key));
    EXPECT_FALSE(form->hwnd());
    EXPECT_EQ(form->Result(), key == VK_RETURN ? folder + "\\new.txt" : "");
    form = std::make_shared<FrmSave>();
    form->Load();
  }
}

}  // namespace
}  // namespace toolkit
