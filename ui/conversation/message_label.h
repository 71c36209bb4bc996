// The text of an alert: as wide as its longest line, wrapped only when the screen is too narrow, with a scroll bar only
// when the screen is not tall enough. "&" is literal.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace conversation {

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

}  // namespace conversation
