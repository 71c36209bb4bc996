// A toolbar of buttons with a picture above the caption.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <span>
#include <string>
#include <vector>

#include "ui/toolkit/caption.h"
#include "ui/toolkit/handles.h"

namespace toolkit {

struct ToolButton {
  int id;  // of its command
  Caption caption;
  int picture;  // index into the toolbar strip
};

class Toolbar {
 public:
  // The table must outlive the toolbar.
  void Create(HWND parent, std::span<const ToolButton> buttons);

  HWND hwnd() const { return hwnd_; }

  // The margin before the first button, pixels.
  void Indent(int pixels);

  // By the index of the button in the table.
  void SetCaption(std::size_t index, const std::string& caption);

  void Enable(int id, bool enabled);

  // Makes it a radio group: one button is pressed at a time.
  void MakeRadio();
  void Press(int id);

  // Clicks the enabled button with this mnemonic; false when there is none.
  bool ClickMnemonic(char letter);

  // Places it at the top of a client area of this width; returns its height. Pixels. Buttons wrap to further lines.
  int Place(int width);

  // Keeps all buttons in one line, however narrow the toolbar is.
  void KeepInOneLine();

  // The size that shows all buttons in one line, pixels. Moves the toolbar: lay it out afterwards.
  SIZE NaturalSize();

  // The size of all buttons together, pixels.
  SIZE ButtonsSize() const;

 private:
  void SetWidths(int spare);

  HWND hwnd_ = nullptr;
  int indent_ = 0;
  std::span<const ToolButton> buttons_;
  std::vector<std::string> captions_;
};

// A radio group of pictures without captions.
class PictureGroup {
 public:
  void Create(HWND parent);

  HWND hwnd() const { return hwnd_; }

  // Replaces all buttons by one for each picture, with consecutive ids.
  void SetPictures(ImageList pictures, int firstId);

  // A name for screen readers; it is not displayed.
  void SetName(int id, std::string name);

  // By the position in the list of pictures; -1 stands for no button.
  void Press(int position);
  int Pressed() const;

  // The size of all buttons together, pixels.
  SIZE ButtonsSize() const;

 private:
  WPARAM IdAt(int position) const { return static_cast<WPARAM>(firstId_ + position); }

  HWND hwnd_ = nullptr;
  int firstId_ = 0, count_ = 0;
  ImageList pictures_;
};

// Makes a toolbar usable by keyboard: it is in the Tab order, arrow keys move between buttons, Space and Enter click.
// The parent gets the same commands as for mouse clicks.
void EnableKeyboardNavigation(HWND toolbar);

}  // namespace toolkit
