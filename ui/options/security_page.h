// The third page of the options dialog: the blocked users.
#pragma once

#include <span>

#include "core/roster.h"
#include "ui/options/page.h"

namespace options {

enum SecurityControl : int { kBlockButton = 130, kUnblockButton, kBlockBox = 161, kBlockEnter = 163 };

class SecurityPage : public Page {
 public:
  explicit SecurityPage(core::Roster& users) : users_(users) {}

  HWND FirstControl() const override { return txtBlock; }
  void LayOut() override;
  void InputSets() override;
  void WriteSets() override;
  bool OnEnter() override { return ::GetFocus() == txtBlock && RunCommand(kBlockEnter); }
  bool OwnsMnemonics() const override { return !toolkit::TrimmedTextOf(txtBlock).empty(); }

  void RefBloc();  // enables Remove while the list has rows

 private:
  void CreateControls() override;
  std::span<const toolkit::Command> Commands() const override;
  LRESULT OnNotify(NMHDR& header) override { return lvBlock.OnNotify(header); }
  void AddBlock();
  void RemoveBlock();

  core::Roster& users_;
  HWND lblcapBlock = nullptr, txtBlock = nullptr, cmdDAdd = nullptr;
  toolkit::Toolbar tbSec;
  ChoiceList lvBlock;
};

}  // namespace options
