// The options dialog: editing the lists of blocked users and of groups.
#include <algorithm>

#include "core/sound.h"
#include "core/text.h"
#include "res/pictures.h"
#include "ui/options/frm_opt.h"
#include "ui/options/names.h"

namespace options {
namespace {

std::string TrimmedText(HWND box) { return std::string(core::Trim(toolkit::TextOf(box))); }

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

void FrmOpt::RefBloc() { tbSec.Enable('r', lvBlock.Count() > 0); }

void FrmOpt::tbSec_ButtonClick(char key) {
  if (key == 'a') return AddBlock();
  RemoveBlock();
}

// Names are not compared: what is listed twice is blocked once.
void FrmOpt::AddBlock() {
  const std::string name = TrimmedText(txtBlock);
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

void FrmOpt::tbGroups_ButtonClick(char key) {
  const std::string name = TrimmedText(txtGroups);
  const bool done = key == 'n' ? NewGroup(name) : key == 'a' ? AddMember(name) : RemoveNode();
  if (!done) core::Beep();
  ReturnTo(txtGroups);
}

void FrmOpt::cmdGroups_Click() { tbGroups_ButtonClick(tvGroups.HasGroups() ? 'a' : 'n'); }

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
