// A list box whose entries have a small system icon (of a folder or a file type) and may be indented.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace toolkit {

// Indices in the system's small image list.
int ClosedFolderIcon();
int OpenFolderIcon();
int FileIcon(const std::string& name);  // by the extension; the file need not exist

class IconList {
 public:
  // The style of the list box to attach.
  static constexpr DWORD kStyle =
      LBS_OWNERDRAWFIXED | LBS_HASSTRINGS | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | WS_VSCROLL | WS_HSCROLL | WS_TABSTOP;

  struct Entry {
    std::string text;
    int icon = 0;
    int indent = 0;  // levels
  };

  void Attach(HWND listBox);

  HWND hwnd() const { return hwnd_; }

  // Replaces the entries; none is selected.
  void Fill(const std::vector<Entry>& entries);

  // From 0; -1 when none is selected.
  int Selection() const { return static_cast<int>(::SendMessageA(hwnd_, LB_GETCURSEL, 0, 0)); }
  void Select(int index) { ::SendMessageA(hwnd_, LB_SETCURSEL, static_cast<WPARAM>(index), 0); }

  // Selects the entry with this text, ignoring case; deselects when there is none.
  void SelectText(const std::string& text);

  std::string TextAt(int index) const;

  // Draws an entry, for the WM_DRAWITEM of the parent.
  void Draw(const DRAWITEMSTRUCT& request) const;

 private:
  HWND hwnd_ = nullptr;
};

}  // namespace toolkit
