// A small flat button with a symbol of the Marlett font, which Windows uses for caption buttons. It is highlighted
// under the mouse, and is a real button for the keyboard and for screen readers.
#pragma once

#include <windows.h>

#include <string>

#include "ui/toolkit/handles.h"

namespace conversation {

class GlyphButton {
 public:
  GlyphButton() = default;
  GlyphButton(const GlyphButton&) = delete;
  GlyphButton& operator=(const GlyphButton&) = delete;
  ~GlyphButton();

  void Create(HWND parent, int id, char glyph);

  // The name for screen readers.
  void SetName(const std::string& name) { ::SetWindowTextA(hwnd_, name.c_str()); }

  // Handles the parent's WM_DRAWITEM for this button.
  void Draw(const DRAWITEMSTRUCT& request) const;

  HWND hwnd() const { return hwnd_; }

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR button);
  void SetHot(bool hot);

  HWND hwnd_ = nullptr;
  char glyph_ = 0;
  bool hot_ = false;
};

}  // namespace conversation
