#include "ui/options/security_page.h"

#include <algorithm>
#include <string>

#include "core/sound.h"
#include "res/pictures.h"
#include "ui/options/option_values.h"
#include "ui/toolkit/pictures.h"

namespace options {
namespace {

constexpr toolkit::Caption kLabel{2015, "Block Users"};

constexpr toolkit::ToolButton kBlockButtons[] = {
    {kBlockButton, {2016, "&Add"}, res::kToolbarAdd},
    {kUnblockButton, {2017, "&Remove"}, res::kToolbarRemove},
};

}  // namespace

void SecurityPage::CreateControls() {
  lblcapBlock = AddLabel(kLabel);
  txtBlock = AddTextBox(kBlockBox);
  AddButtons(tbSec, kBlockButtons);
  AddName(kLabel);
  lvBlock.Attach(AddControl(WC_LISTVIEWA, "", ChoiceList::kStyle | LVS_SHAREIMAGELISTS, WS_EX_CLIENTEDGE),
                 toolkit::SharedPictures(res::Strip::Roster));
  cmdDAdd = AddControl("BUTTON", "", 0, 0, kBlockEnter);
  ::ShowWindow(cmdDAdd, SW_HIDE);
}

void SecurityPage::LayOut() {
  LayOutList(lblcapBlock, txtBlock, tbSec, lvBlock.hwnd());
  lvBlock.FitColumn();
}

void SecurityPage::InputSets() {
  lvBlock.Clear();
  for (const std::string& name : users_.BlockedNames()) lvBlock.Add(name, res::kRosterBlocked);
  lvBlock.FitColumn();
  RefBloc();
}

void SecurityPage::WriteSets() {
  users_.ClearBlockedNames();
  for (const std::string& name : lvBlock.Texts()) users_.AddBlocked(name);
  users_.RefBlock();
}

void SecurityPage::RefBloc() { tbSec.Enable(kUnblockButton, lvBlock.Count() > 0); }

std::span<const toolkit::Command> SecurityPage::Commands() const {
  static const toolkit::Command kCommands[] = {
      {kBlockButton, &SecurityPage::AddBlock},
      {kBlockEnter, &SecurityPage::AddBlock},
      {kUnblockButton, &SecurityPage::RemoveBlock},
  };
  return kCommands;
}

// Duplicates are not refused: a name that is listed twice is blocked once.
void SecurityPage::AddBlock() {
  const std::string name = toolkit::TrimmedTextOf(txtBlock);
  if (name.empty()) return;
  lvBlock.Add(ProperCase(name), res::kRosterBlocked);
  lvBlock.FitColumn();
  lvBlock.Select(lvBlock.Count() - 1);
  ::SetWindowTextA(txtBlock, "");
  RefBloc();
}

void SecurityPage::RemoveBlock() {
  const int selected = lvBlock.Selected();
  if (selected < 0) return core::Beep();
  ::SetWindowTextA(txtBlock, lvBlock.TextAt(selected).c_str());
  lvBlock.Remove(selected);
  lvBlock.FitColumn();
  RefBloc();
  if (lvBlock.Count() > 0) lvBlock.Select(std::min(selected, lvBlock.Count() - 1));
  FocusAndSelect(txtBlock);
}

}  // namespace options
