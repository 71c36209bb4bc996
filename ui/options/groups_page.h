// The fourth page of the options dialog: the groups of users.
#pragma once

#include <span>
#include <string>

#include "core/roster.h"
#include "ui/options/group_tree.h"
#include "ui/options/page.h"

namespace options {

enum GroupsControl : int {
  kNewGroupButton = 140,
  kAddMemberButton,
  kRemoveNodeButton,
  kGroupBox = 162,
  kGroupEnter = 164,
};

class GroupsPage : public Page {
 public:
  explicit GroupsPage(core::Roster& users) : users_(users) {}

  HWND FirstControl() const override { return txtGroups; }
  void LayOut() override;
  void Fill() override { AddGroups(); }
  void InputSets() override;
  void WriteSets() override;
  bool OnEnter() override { return ::GetFocus() == txtGroups && RunCommand(kGroupEnter); }
  bool OwnsMnemonics() const override { return !toolkit::TrimmedTextOf(txtGroups).empty(); }

  void AddGroups();  // the root of the tree

 private:
  void CreateControls() override;
  std::span<const toolkit::Command> Commands() const override;
  LRESULT OnNotify(NMHDR& header) override { return tvGroups.OnNotify(header); }
  void NewClick();
  void AddClick();
  void RemoveClick();
  void cmdGroups_Click();
  void EndEdit(bool done);

  core::Roster& users_;
  HWND lblcapGroups = nullptr, txtGroups = nullptr, cmdGroups = nullptr;
  toolkit::Toolbar tbGroups;
  GroupTree tvGroups;
};

}  // namespace options
