// A page of the options dialog: a child window with the controls of some settings. And what the pages have in common.
#pragma once

#include <span>

#include "ui/toolkit/toolbar.h"
#include "ui/toolkit/units.h"
#include "ui/toolkit/window.h"

namespace options {

class Page : public toolkit::Window {
 public:
  // Creates the page, hidden and without a size, with its controls in their Tab order.
  void Load(HWND dialog);

  // Puts into the controls what there is to choose from; called once, before the page gets its size.
  virtual void Fill() {}

  // Gives the controls their places in the page.
  void LayOut() override = 0;

  // Settings into controls, and back. A setting of which nothing is selected keeps its value.
  virtual void InputSets() = 0;
  virtual void WriteSets() = 0;

  // The control that gets the focus when the page is shown.
  virtual HWND FirstControl() const = 0;

  // Enter was pressed; true when the page has used it.
  virtual bool Enter() { return false; }

  // Of a mnemonic that a button of the page and one of the dialog share: true when it is the page's.
  virtual bool OwnsMnemonics() const { return false; }

  // The mnemonics of the page's toolbars.
  using Window::Translate;

 protected:
  virtual void CreateControls() = 0;

  HWND AddLabel(const toolkit::Caption& text);

  // A text box without a limit: other users' names come from anywhere. Its text is selected when it gets the focus.
  HWND AddTextBox(int id);

  // A toolbar whose buttons stay in one line.
  void AddButtons(toolkit::Toolbar& toolbar, std::span<const toolkit::ToolButton> buttons);

  // Lays out a page that edits a list: a label above its text box, the toolbar beside both, the list below.
  void LayOutList(HWND label, HWND box, toolkit::Toolbar& toolbar, HWND list) const;

  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;

  // The answer to a WM_NOTIFY.
  virtual LRESULT Notified(NMHDR&) { return 0; }
};

// Lengths of the design, and the height in pixels of what holds one line of text.
inline constexpr toolkit::Twips kMargin = toolkit::DesignPixels(12), kGap = toolkit::DesignPixels(4);
int LineHeight();
int FieldHeight();

// Places a window within its parent, in pixels; a negative width or height counts as 0.
void Place(HWND window, int left, int top, int width, int height);
void BringToTop(HWND window);

SIZE ClientSize(HWND window);

// Gives the focus to a text box and selects its text, so that typing replaces it.
void ReturnTo(HWND box);

}  // namespace options
