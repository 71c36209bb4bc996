// The controls of an alert popup.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace conversation {

// The text of an alert: as wide as its longest line, wrapped only when the screen is too narrow, with a scroll bar only
// when the screen is not tall enough. "&" is literal.
class MessageLabel {
 public:
  MessageLabel() = default;
  MessageLabel(const MessageLabel&) = delete;
  MessageLabel& operator=(const MessageLabel&) = delete;
  ~MessageLabel();

  // `text` becomes the window text unchanged.
  void Create(HWND parent, const std::string& text);

  // Breaks the text into lines; returns their size with margins, within the given maximum. Pixels.
  SIZE Fit(SIZE largest);

  // In the form of PaintColour.
  void SetForeColour(std::int32_t colour);
  void SetBackColour(int systemColour);

  HWND hwnd() const { return hwnd_; }

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR label);
  LRESULT Answer(UINT message, WPARAM wParam, LPARAM lParam);
  void MakeScrollable();
  void Paint();
  void PaintLines(HDC dc) const;
  void Scroll(int command);
  void ScrollTo(int line);
  bool ScrollByKey(WPARAM key);
  int PageLines() const;

  HWND hwnd_ = nullptr;
  std::string shown_;
  std::vector<std::string_view> lines_;  // into shown_
  std::int32_t foreColour_ = 0;
  int backColour_ = COLOR_BTNFACE;
  int lineHeight_ = 1;
  int top_ = 0;  // first line in view
  bool scrolls_ = false;
  int wheel_ = 0;  // remaining rotation of the wheel, less than a line
};

// A small flat button with a symbol of the Marlett font, which Windows uses for caption buttons. It is highlighted
// under the mouse, and is a real button for the keyboard and for screen readers.
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
