// imgSep and picSep: a horizontal splitter bar between two controls. The bar itself is an empty strip of its window;
// during a drag a second bar follows the pointer, and the window is laid out at the end.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "ui/toolkit/units.h"

namespace conversation {

class SplitterBar {
 public:
  // Returns the allowed top of the bar for a requested one, in twips of the client area.
  std::function<toolkit::Twips(toolkit::Twips top)> within;
  std::function<void(toolkit::Twips top)> moved;

  void Create(HWND host);

  // Pixels of the client area.
  void Place(const toolkit::Area& bar) { imgSep = bar; }

  // Handles a message of the host; true when it was handled.
  bool Handle(UINT message, WPARAM wParam, LPARAM lParam);

 private:
  bool IsOver(POINT at) const;
  bool PointerIsOver() const;
  void Press(int y);
  void Drag(int y);
  void Release();
  void Cancel();

  HWND host_ = nullptr;
  toolkit::Area imgSep{};
  HWND picSep = nullptr;
  std::optional<int> grip_;  // offset of the pointer in the bar, pixels; nothing when not dragging
  toolkit::Twips dragTop_{};
};

}  // namespace conversation
