// A toolbar whose buttons are told apart by a key letter, with a picture above the caption.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "ui/toolkit/caption.h"

namespace toolkit {

struct ToolButton {
  char key;  // lower case; what a click is dispatched by
  Caption caption;
  int picture;  // index into the toolbar strip
};

class Toolbar {
 public:
  // Command ids of the buttons are firstId, firstId + 1, ... in the order of the table.
  void Create(HWND parent, int firstId, std::span<const ToolButton> buttons);

  HWND hwnd() const { return hwnd_; }

  // Free pixels before the first button.
  void Indent(int pixels);

  // Of the button at this place of the table.
  void SetCaption(std::size_t index, const std::string& caption);

  void Enable(char key, bool enabled);

  // The key of the button with this command id, none for a foreign id.
  std::optional<char> KeyOf(int commandId) const;

  // Clicks the enabled button whose mnemonic this is; false when there is none.
  bool ClickMnemonic(char letter);

  // At the top of a client area of this width; returns its height. Pixels. Buttons that do not fit go to further
  // lines.
  int Place(int width);

 private:
  void SetWidths(int spare);

  HWND hwnd_ = nullptr;
  int firstId_ = 0;
  int indent_ = 0;
  std::span<const ToolButton> buttons_;
  std::vector<std::string> captions_;
};

// The keyboard in a toolbar: it takes part in the Tab order, the arrows go from button to button, Space and Enter
// click. The toolbar's window reports the clicks to its parent as it does those of the mouse.
void EnableKeyboardNavigation(HWND toolbar);

}  // namespace toolkit
