// The options dialog: editing the lists of blocked users and of groups.
#include <algorithm>

#include "core/sound.h"
#include "core/text.h"
#include "res/pictures.h"
#include "ui/options/frm_opt.h"
#include "ui/options/frm_opt_parts.h"
#include "ui/options/names.h"

namespace options {
namespace {

// With all of its text selected, so that typing begins a new one.
void ReturnTo(HWND box) {
  ::SetFocus(box);
  ::SendMessageA(box, EM_SETSEL, 0, -1);
}

}  // namespace

void FrmOpt::FillBlocked() {
  lvBlock.Clear();
  for (const std::string& name : program_.Users().BlockedNames()) lvBlock.Add(name, res::kRosterBlocked);
  lvBlock.FitColumn();
}

void FrmOpt::RefBloc() { tbSec.Enable(kUnblockButton, lvBlock.Count() > 0); }

// Names are not compared: what is listed twice is blocked once.
void FrmOpt::AddBlock() {
  const std::string name = toolkit::TrimmedTextOf(txtBlock);
  if (name.empty()) return;
  lvBlock.Add(ProperCase(name), res::kRosterBlocked);
  lvBlock.FitColumn();
  lvBlock.Select(lvBlock.Count() - 1);
  ::SetWindowTextA(txtBlock, "");
  RefBloc();
}

void FrmOpt::RemoveBlock() {
  const int selected = lvBlock.Selected();
  if (selected < 0) return core::Beep();
  ::SetWindowTextA(txtBlock, lvBlock.TextAt(selected).c_str());
  lvBlock.Remove(selected);
  lvBlock.FitColumn();
  RefBloc();
  if (lvBlock.Count() > 0) lvBlock.Select(std::min(selected, lvBlock.Count() - 1));
  ReturnTo(txtBlock);
}

void FrmOpt::NewGroup_Click() { GroupsEdited(NewGroup(toolkit::TrimmedTextOf(txtGroups))); }

void FrmOpt::AddMember_Click() { GroupsEdited(AddMember(toolkit::TrimmedTextOf(txtGroups))); }

void FrmOpt::RemoveNode_Click() { GroupsEdited(RemoveNode()); }

void FrmOpt::GroupsEdited(bool done) {
  if (!done) core::Beep();
  ReturnTo(txtGroups);
}

void FrmOpt::cmdGroups_Click() { tvGroups.HasGroups() ? AddMember_Click() : NewGroup_Click(); }

// A bar ends a name in the stored line.
bool FrmOpt::NewGroup(const std::string& name) {
  if (name.empty()) return true;
  return core::Find(name, "|") == std::string::npos && tvGroups.AddGroup(name);
}

bool FrmOpt::AddMember(const std::string& name) {
  if (name.empty() && tvGroups.IsInGroup()) return true;
  return core::Find(name, "|") == std::string::npos && tvGroups.AddMember(name);
}

bool FrmOpt::RemoveNode() {
  if (!tvGroups.IsInGroup()) return false;
  ::SetWindowTextA(txtGroups, tvGroups.RemoveSelected().c_str());
  return true;
}

}  // namespace options
