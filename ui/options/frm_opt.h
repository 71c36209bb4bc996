// The options dialog: the user's name and colour, how new messages come in, blocked users and groups. It edits copies;
// Accept puts them into effect, Close forgets them.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/program.h"
#include "ui/options/choice_list.h"
#include "ui/options/choices.h"
#include "ui/options/group_tree.h"
#include "ui/options/page.h"
#include "ui/options/sounds.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/toolbar.h"
#include "ui/toolkit/window.h"

namespace options {

class FrmOpt : public toolkit::Window {
 public:
  // `shutDown`: ends the program, when the dialog is closed at start-up.
  FrmOpt(core::Program& program, std::function<void()> shutDown) : program_(program), shutDown_(std::move(shutDown)) {}

  // Set before the dialog is shown: the own name is another user's, and closing the dialog ends the program.
  bool atStartUp = false;

  // Creates the window, hidden, in the middle of the work area, with the settings in its controls.
  void Load();

  // Settings into controls, and back. WriteSets throws the file's error when the settings cannot be saved.
  void InputSets();
  void WriteSets();

  void AddGroups();                  // the root of the groups tree
  void AddSnd();                     // the list of sounds
  void RefBloc();                    // what can be used on the page of blocked users
  void AddPos();                     // the buttons of the positions
  void SetPos(int position);         // 1 to 4; any other number presses none
  void SetCol(std::int32_t colour);  // a colour that is not among the sixteen selects none
  void AddCols();                    // the swatches

 private:
  enum PageIndex : std::size_t { kUser, kInterface, kSecurity, kGroups, kPages };

  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool Translate(MSG& message) override;
  bool TranslateKey(const MSG& key);
  bool ClickMnemonic(char letter);
  std::span<const toolkit::Command> Commands() const override;
  LRESULT Notified(LPARAM lParam);
  LRESULT DrawSwatchItem(LPARAM lParam) const;
  LRESULT ColourControl(UINT message, WPARAM wParam, LPARAM lParam);

  // Loading.
  void CreatePages();
  void CreateUserPage();
  void CreateInterfacePage();
  void CreateSecurityPage();
  void CreateGroupsPage();
  HWND AddLabel(std::size_t page, std::size_t label);
  HWND AddBox(std::size_t page, int id);
  void SetSwatchName(int index, const std::string& name);
  void SetPositionName(int index, std::string name);
  void PlaceWindow();
  void LayOut() override;
  void LayOutUser();
  void LayOutInterface();
  void LayOutList(std::size_t page, HWND label, HWND box, toolkit::Toolbar& toolbar, HWND list);
  void ShowPage(std::size_t page);

  // Editing.
  void tbOpt_ButtonClick(unsigned page);
  void Accept();
  void CloseClicked();
  void ChangeLanguage();
  void AddBlock();
  void RemoveBlock();
  void NewGroup_Click();
  void AddMember_Click();
  void RemoveNode_Click();
  void GroupsEdited(bool done);
  void cmdGroups_Click();
  bool NewGroup(const std::string& name);
  bool AddMember(const std::string& name);
  bool RemoveNode();
  void lvCol_ItemClick(int index);
  void txtName_Change();
  void txtName_GotFocus();
  void txtName_LostFocus();
  void CheckName();
  void txtBlock_GotFocus();
  void txtGroups_GotFocus();
  void BoxEntered(HWND box, HWND button);
  void BoxLeft();
  void TestSound();
  std::string SelectedSound() const;
  std::optional<std::string> SelectedLanguage() const;
  int PressedPos() const;
  void SelectSound(const std::string& key);
  void FillBlocked();

  core::Program& program_;
  const std::function<void()> shutDown_;

  toolkit::Toolbar tbOpt, TB, tbSnd, tbSec, tbGroups;
  std::array<std::shared_ptr<Page>, kPages> picOpt;
  std::array<HWND, 8> lblcap{};

  HWND txtName = nullptr, lvCol = nullptr, Frame1 = nullptr, lblPrevew = nullptr;
  std::shared_ptr<Page> picPrevew;
  toolkit::ImageList imlCol;

  HWND CMBlang = nullptr, chkStartUp = nullptr, tbPos = nullptr, lblHeight = nullptr;
  toolkit::ImageList imlPos, imlSnd;
  ChoiceList lvSnd;

  HWND txtBlock = nullptr, cmdDAdd = nullptr;
  ChoiceList lvBlock;

  HWND txtGroups = nullptr, cmdGroups = nullptr;
  GroupTree tvGroups;

  std::array<HWND, 2> lines_{};  // below the page selector and above the commands
  std::vector<Sound> sounds_;    // of lvSnd
  std::int32_t colour_ = 0;      // of the name and its preview
  std::size_t page_ = kUser;
  HWND default_ = nullptr;  // the button that Enter clicks
  bool accepting_ = false;  // events run while choices are applied
  bool renamed_ = false;    // the own name is this dialog's choice, so it clashes with nobody any more
};

}  // namespace options
