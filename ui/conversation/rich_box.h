// The system's rich text box, as a box that shows text and never takes one for anything but plain text.
#pragma once

#include <windows.h>
#include <richedit.h>

#include <optional>
#include <string>

#include "ui/toolkit/area.h"

namespace conversation {

// Places are counted in characters of the box. What changes the text or the place in view is to be done while no
// painting is (WithoutPainting).
class RichBox {
 public:
  // A child of the window. The window gets a WM_COMMAND with the code EN_VSCROLL whenever the user may have scrolled.
  // Null when the system has no room for another one.
  static HWND Make(HWND parent);

  explicit RichBox(HWND hwnd = nullptr) : hwnd_(hwnd) {}
  HWND hwnd() const { return hwnd_; }

  // True while the box handles input of the user, inside a loop of its own perhaps: it must not be destroyed.
  static bool InUse();

  static bool ThumbDragged();

  void MoveTo(const toolkit::Area& area) const;

  // Puts itself there, in the order of controls too, and takes over the size in which the user reads.
  void TakePlaceOf(const RichBox& other, const toolkit::Area& area) const;

  // Width for text, pixels.
  int TextWidth() const;

  // The size of its letters in half points.
  static int FontSize();

  void Select(CHARRANGE range) const;
  CHARRANGE Selection() const;

  // Of the paragraph with the caret, twips: where the first row begins, and how much further to the right the others
  // and what stands behind a tab do.
  void SetIndents(LONG start, LONG offset) const;

  // At the caret, which is at the beginning of a paragraph; a paragraph without its end, and short, because a box may
  // take a time for it that grows with the square of its length. No colour stands for the system's.
  void InsertParagraph(const std::string& text, std::optional<COLORREF> colour, LONG start, LONG offset) const;

  // At the caret, the markup of whole paragraphs.
  void InsertMarkup(const std::string& markup) const;

  // Puts a paragraph's end in.
  void BreakAt(LONG character) const;

  void Remove(LONG from, LONG to) const;

  bool AtTop() const;
  bool AtEnd() const;
  void ScrollToEnd() const;

  // A character at the top of what is in view, and where: pixels below the top of the box.
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

// The box would paint itself at each step, and what a painting costs grows with the conversation. So it is painted when
// the program has nothing else to do, once for all that has changed meanwhile.
class WithoutPainting {
 public:
  explicit WithoutPainting(const RichBox& box) : hwnd_(box.hwnd()) { ::SendMessageA(hwnd_, WM_SETREDRAW, FALSE, 0); }
  WithoutPainting(const WithoutPainting&) = delete;
  WithoutPainting& operator=(const WithoutPainting&) = delete;
  ~WithoutPainting();

 private:
  HWND hwnd_;
};

}  // namespace conversation
