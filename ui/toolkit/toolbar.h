// A toolbar of buttons with a picture above the caption.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <span>
#include <string>
#include <vector>

#include "ui/toolkit/caption.h"

namespace toolkit {

struct ToolButton {
  int id;  // of its command
  Caption caption;
  int picture;  // index into the toolbar strip
};

class Toolbar {
 public:
  // The table has to outlive the toolbar.
  void Create(HWND parent, std::span<const ToolButton> buttons);

  HWND hwnd() const { return hwnd_; }

  // Free pixels before the first button.
  void Indent(int pixels);

  // Of the button at this place of the table.
  void SetCaption(std::size_t index, const std::string& caption);

  void Enable(int id, bool enabled);

  // From now on one button is pressed at a time.
  void MakeRadio();
  void Press(int id);

  // Clicks the enabled button whose mnemonic this is; false when there is none.
  bool ClickMnemonic(char letter);

  // At the top of a client area of this width; returns its height. Pixels. Buttons that do not fit go to further
  // lines.
  int Place(int width);

  // The buttons take no further line, however narrow the toolbar is.
  void KeepInOneLine();

  // The size that shows all buttons in one line, pixels. Gives the toolbar a new place: lay it out afterwards.
  SIZE NaturalSize();

 private:
  void SetWidths(int spare);

  HWND hwnd_ = nullptr;
  int indent_ = 0;
  std::span<const ToolButton> buttons_;
  std::vector<std::string> captions_;
};

// What the buttons of a toolbar take, pixels.
SIZE ToolbarSize(HWND toolbar);

// The keyboard in a toolbar: it takes part in the Tab order, the arrows go from button to button, Space and Enter
// click. The toolbar's window reports the clicks to its parent as it does those of the mouse.
void EnableKeyboardNavigation(HWND toolbar);

}  // namespace toolkit
