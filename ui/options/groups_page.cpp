#include "ui/options/groups_page.h"

#include "core/sound.h"
#include "core/text.h"
#include "res/pictures.h"
#include "ui/toolkit/pictures.h"

namespace options {
namespace {

constexpr toolkit::Caption kLabel{2018, "Groups"};

constexpr toolkit::ToolButton kGroupButtons[] = {
    {kNewGroupButton, {2019, "&New"}, res::kToolbarNew},
    {kAddMemberButton, {2020, "&Add"}, res::kToolbarAdd},
    {kRemoveNodeButton, {2021, "&Remove"}, res::kToolbarRemove},
};

// A bar terminates a name in the stored line.
bool IsStorable(const std::string& name) { return core::Find(name, "|") == std::string::npos; }

}  // namespace

void GroupsPage::CreateControls() {
  lblcapGroups = AddLabel(kLabel);
  txtGroups = AddTextBox(kGroupBox);
  AddButtons(tbGroups, kGroupButtons);
  AddName(kLabel);
  tvGroups.Attach(AddControl(WC_TREEVIEWA, "", GroupTree::kStyle, WS_EX_CLIENTEDGE),
                  toolkit::SharedPictures(res::Strip::Roster));
  cmdGroups = AddControl("BUTTON", "<Enter Detect>", 0, 0, kGroupEnter);
  ::ShowWindow(cmdGroups, SW_HIDE);
}

void GroupsPage::AddGroups() {
  tvGroups.AddRoot();
  AddCaption({2201, "Groups"}, [this](const std::string& text) { tvGroups.SetRootText(text); });
}

void GroupsPage::LayOut() { LayOutList(lblcapGroups, txtGroups, tbGroups, tvGroups.hwnd()); }

void GroupsPage::InputSets() { tvGroups.Fill(GroupsOf(users_.GroupLines())); }

void GroupsPage::WriteSets() {
  users_.SetGroupLines(LinesOf(tvGroups.Groups()));
  users_.RefGroups();
  users_.UpdateStat();  // no packet will do it when the network is out
}

std::span<const toolkit::Command> GroupsPage::Commands() const {
  static const toolkit::Command kCommands[] = {
      {kNewGroupButton, &GroupsPage::NewClick},
      {kAddMemberButton, &GroupsPage::AddClick},
      {kRemoveNodeButton, &GroupsPage::RemoveClick},
      {kGroupEnter, &GroupsPage::cmdGroups_Click},
  };
  return kCommands;
}

void GroupsPage::NewClick() {
  const std::string name = toolkit::TrimmedTextOf(txtGroups);
  EndEdit(name.empty() || (IsStorable(name) && tvGroups.AddGroup(name)));
}

void GroupsPage::AddClick() {
  const std::string name = toolkit::TrimmedTextOf(txtGroups);
  if (name.empty() && tvGroups.IsInGroup()) return EndEdit(true);
  EndEdit(IsStorable(name) && tvGroups.AddMember(name));
}

void GroupsPage::RemoveClick() {
  const bool removable = tvGroups.IsInGroup();
  if (removable) ::SetWindowTextA(txtGroups, tvGroups.RemoveSelected().c_str());
  EndEdit(removable);
}

void GroupsPage::cmdGroups_Click() { tvGroups.HasGroups() ? AddClick() : NewClick(); }

// Beeps when an edit was refused; the box gets the focus for the next one.
void GroupsPage::EndEdit(bool done) {
  if (!done) core::Beep();
  ReturnTo(txtGroups);
}

}  // namespace options
