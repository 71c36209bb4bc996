// The first page of the options dialog: the user's own name and its colour.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "core/roster.h"
#include "ui/options/page.h"
#include "ui/toolkit/handles.h"

namespace options {

class Preview;

// Posted to the dialog when the name box loses the focus: no message box may open while the focus is moving.
inline constexpr UINT kNameLeft = WM_APP;

enum UserControl : int { kNameBox = 160 };

class UserPage : public Page {
 public:
  UserPage();

  HWND FirstControl() const override { return txtName; }
  void LayOut() override;
  void Fill() override { AddCols(); }
  void InputSets() override;
  void WriteSets() override;

  void AddCols();                    // the swatches
  void SetCol(std::int32_t colour);  // selects its swatch; a colour that has none changes nothing

  // The code of the message that refuses the name, 0 when the name is valid; see RefusalOf.
  int Refusal(const core::Roster& users, bool ownNameIsTaken) const;

  // Handles kNameLeft: trims the name in place; true when it is empty then. Only while the focus stays in this dialog,
  // not when the user switches to another program.
  bool IsNameMissing();

 private:
  void CreateControls() override;
  std::span<const toolkit::Command> Commands() const override;
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  LRESULT OnNotify(NMHDR& header) override;
  LRESULT DrawSwatchItem(const NMLVCUSTOMDRAW& draw) const;
  void SetSwatchName(int index, const std::string& name);
  void lvCol_ItemClick(int index);
  void txtName_Change();
  void txtName_LostFocus();

  HWND lblcapName = nullptr, lblcapColour = nullptr;
  HWND txtName = nullptr, lvCol = nullptr, Frame1 = nullptr;
  const std::shared_ptr<Preview> picPrevew;
  toolkit::ImageList imlCol;
  std::int32_t colour_ = 0;  // of the name and its preview
};

}  // namespace options
