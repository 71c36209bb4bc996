// The base of the pages of the options dialog, and what their layouts, images and lists have in common.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "ui/toolkit/handles.h"
#include "ui/toolkit/toolbar.h"
#include "ui/toolkit/units.h"
#include "ui/toolkit/window.h"

namespace options {

// A child window with the controls of some settings, which handles their messages.
class Page : public toolkit::Window {
 public:
  // Creates the page, hidden and without a size, with its controls in their Tab order.
  void Load(HWND dialog);

  // Fills the lists of choices. Called once, after the captions were set and before the page gets its size.
  virtual void Fill() {}

  // Places the controls in the page.
  void LayOut() override = 0;

  // Copy the settings into the controls, and back. A setting keeps its value while nothing is selected for it.
  virtual void InputSets() = 0;
  virtual void WriteSets() = 0;

  // The control that gets the focus when the page is shown.
  virtual HWND FirstControl() const = 0;

  // Called when Enter was pressed; true when the page has handled it.
  virtual bool OnEnter() { return false; }

  // True while the page takes mnemonics that its buttons share with the dialog's.
  virtual bool OwnsMnemonics() const { return false; }

  // Handles the mnemonics of the page's toolbars.
  using Window::Translate;

 protected:
  virtual void CreateControls() = 0;

  HWND AddLabel(const toolkit::Caption& text);

  // A text box without a length limit, since names of other users have none. Getting the focus selects its text.
  HWND AddTextBox(int id);

  // A toolbar whose buttons stay in one line.
  void AddButtons(toolkit::Toolbar& toolbar, std::span<const toolkit::ToolButton> buttons);

  // Lays out a page that edits a list: a label above its text edit, the toolbar beside both, the list below.
  void LayOutList(HWND label, HWND edit, toolkit::Toolbar& toolbar, HWND list) const;

  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;

  // The result of a WM_NOTIFY.
  virtual LRESULT OnNotify(NMHDR&) { return 0; }
};

// The margin of a page and the gap between a label and its control; the height, in pixels, of a control that holds a
// line of text.
inline constexpr toolkit::Twips kMargin = toolkit::DesignPixels(12), kGap = toolkit::DesignPixels(4);
int FieldHeight();

void BringToTop(HWND window);

// Gives the focus to a text box and selects its text.
void FocusAndSelect(HWND edit);

// Some images are drawn at run time, because they depend on the system's colours and the screen's scaling: an
// off-screen bitmap, on which the images of an image list are drawn one after the other. Sizes in pixels.
class Scratch {
 public:
  explicit Scratch(SIZE size);

  // An empty list for `count` images of this size.
  toolkit::ImageList NewList(int count) const;

  // Draws an image and appends it to the list.
  void Add(HIMAGELIST list, const std::function<void(HDC dc, const RECT& whole)>& draw) const;

 private:
  SIZE size_;
  toolkit::MemoryDc dc_;
  toolkit::Bitmap bitmap_;
};

// A list view with one column, in which one row can be selected.
class ChoiceList {
 public:
  // The style of the list view to attach.
  static constexpr DWORD kStyle = LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_TABSTOP;

  void Attach(HWND listView, HIMAGELIST pictures);

  HWND hwnd() const { return hwnd_; }

  // The result of a WM_NOTIFY that the parent window received; 0 when it came from another control.
  LRESULT OnNotify(NMHDR& header) const;

  void Clear() { ListView_DeleteAllItems(hwnd_); }
  void Add(const std::string& text, int picture);
  void Remove(int index) { ListView_DeleteItem(hwnd_, index); }
  int Count() const { return ListView_GetItemCount(hwnd_); }

  // Index of the selected row, -1 when there is none.
  int Selected() const { return ListView_GetNextItem(hwnd_, -1, LVNI_SELECTED); }

  // Selects a row and scrolls it into view.
  void Select(int index);

  // Of any length: a name from the network may fill a datagram.
  std::string TextAt(int index) const;
  void SetText(int index, const std::string& text);
  std::vector<std::string> Texts() const;

  // Makes the column as wide as the list. Call it after the list was resized or rows were added or removed, which may
  // show or hide the scroll bar.
  void FitColumn();

 private:
  HWND hwnd_ = nullptr;
};

}  // namespace options
