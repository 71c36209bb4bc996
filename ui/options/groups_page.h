// The fourth page of the options dialog: the groups of users.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <span>
#include <string>
#include <vector>

#include "core/roster.h"
#include "ui/options/option_values.h"
#include "ui/options/page.h"

namespace options {

// The kinds of node in the tree: the root, its groups, and their members.
enum class NodeKind : char { None = 0, Root = 'A', Group = 'G', User = 'U' };

// The tree of groups and their members.
class GroupTree {
 public:
  // The style of the tree view to attach.
  static constexpr DWORD kStyle =
      TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS | TVS_DISABLEDRAGDROP | WS_TABSTOP;

  // The result of a WM_NOTIFY that the parent window received; 0 when it came from another control.
  LRESULT OnNotify(NMHDR& header) const;

  void Attach(HWND treeView, HIMAGELIST pictures);

  HWND hwnd() const { return hwnd_; }

  void AddRoot();
  void SetRootText(const std::string& text);

  // Replaces all groups; each is expanded.
  void Fill(const std::vector<Group>& groups);
  std::vector<Group> Groups() const;
  bool HasGroups() const { return FirstGroup() != nullptr; }

  // Add a node and select it. False, and nothing is added, when a sibling has exactly the same text, or when no group
  // is selected that a member could join.
  bool AddGroup(const std::string& name);
  bool AddMember(const std::string& name);  // to the selected group, or to that of the selected member

  NodeKind SelectedKind() const;
  bool IsInGroup() const { return SelectedKind() == NodeKind::Group || SelectedKind() == NodeKind::User; }

  // Removes the selected node with its children; returns its text.
  std::string RemoveSelected();

 private:
  HTREEITEM Insert(HTREEITEM parent, NodeKind kind, const std::string& text);
  HTREEITEM FirstGroup() const { return TreeView_GetChild(hwnd_, root_); }
  HTREEITEM Selected() const { return TreeView_GetSelection(hwnd_); }
  NodeKind KindOf(HTREEITEM item) const;
  std::string TextOf(HTREEITEM item) const;
  bool HasChild(HTREEITEM parent, const std::string& text) const;
  void Select(HTREEITEM item);

  HWND hwnd_ = nullptr;
  HTREEITEM root_ = nullptr;
};

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
