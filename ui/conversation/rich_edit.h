// The system's rich edit control, which displays text and never interprets it.
#pragma once

#include <windows.h>
#include <richedit.h>

#include <functional>
#include <optional>
#include <string>

#include "ui/toolkit/units.h"

namespace conversation {

// Positions are characters of the control. Change the text or the scroll position only within WithoutPainting.
class RichEdit {
 public:
  // What is copied in place of the selection; empty when it is the selection itself.
  using Copied = std::function<std::string()>;

  // Creates a child of the window, which gets WM_COMMAND with the code EN_VSCROLL whenever the user may have scrolled.
  // `copied` must outlive the control. Null when it cannot be created.
  static HWND Make(HWND parent, const Copied& copied);

  explicit RichEdit(HWND hwnd = nullptr) : hwnd_(hwnd) {}
  HWND hwnd() const { return hwnd_; }

  // True while the control handles user input, possibly in a loop of its own: it must not be destroyed then.
  static bool InUse();

  static bool ThumbDragged();

  void MoveTo(const toolkit::Area& area) const;

  // Takes the position of another control, in the Z order too, and its zoom.
  void TakePlaceOf(const RichEdit& other, const toolkit::Area& area) const;

  // The width available for text, pixels.
  int TextWidth() const;

  // The font size in half points.
  static int FontSize();

  void Select(CHARRANGE range) const;
  CHARRANGE Selection() const;

  // In the system's code page; paragraphs end with CR or CR LF.
  std::string TextOf(CHARRANGE range) const;

  // The indents of the paragraph with the caret, twips: of the first row, and of the other rows and the tab stop
  // relative to it.
  void SetIndents(LONG start, LONG offset) const;

  // Inserts the text of a paragraph, without its end, at the caret, which is at the beginning of a paragraph. Short
  // texts only, because a control may take quadratic time. No colour means the system's.
  void InsertParagraph(const std::string& text, std::optional<COLORREF> colour, LONG start, LONG offset) const;

  // Inserts the markup of whole paragraphs at the caret.
  void InsertMarkup(const std::string& markup) const;

  // Inserts a paragraph end.
  void BreakAt(LONG character) const;

  void Remove(LONG from, LONG to) const;

  bool AtTop() const;
  bool AtEnd() const;
  void ScrollToEnd() const;

  // A character at the top of the view, and its distance from the top of the control, pixels.
  struct Anchor {
    LONG character, top;
  };
  Anchor TopInView() const;
  void ScrollTo(Anchor anchor) const;

 private:
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageA(hwnd_, message, wParam, lParam);
  }
  template <class Value>
  LRESULT Send(UINT message, WPARAM wParam, const Value* value) const {
    return Send(message, wParam, reinterpret_cast<LPARAM>(value));
  }
  void InsertPlain(const std::string& text) const;
  LONG TopOf(LONG character) const;
  SCROLLINFO Scroll() const;

  HWND hwnd_;
};

// Suppresses painting for the duration of a scope. The control would repaint after every change, at a cost that grows
// with the conversation; so it is invalidated, and painted once when the program is idle.
class WithoutPainting {
 public:
  explicit WithoutPainting(const RichEdit& edit) : hwnd_(edit.hwnd()) { ::SendMessageA(hwnd_, WM_SETREDRAW, FALSE, 0); }
  WithoutPainting(const WithoutPainting&) = delete;
  WithoutPainting& operator=(const WithoutPainting&) = delete;
  ~WithoutPainting();

 private:
  HWND hwnd_;
};

}  // namespace conversation
