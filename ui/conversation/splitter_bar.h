// imgSep and picSep: a horizontal bar between two controls that is dragged up and down. The bar itself is a bare strip
// of its window; while it is dragged a second bar goes with the pointer, and the window is laid out anew at the end.
#pragma once

#include <windows.h>

#include <functional>
#include <optional>

#include "ui/toolkit/area.h"
#include "ui/toolkit/units.h"

namespace conversation {

class SplitterBar {
 public:
  // Where the bar may stand when it is wished at a place; its top, in twips of the client area.
  std::function<toolkit::Twips(toolkit::Twips top)> within;
  std::function<void(toolkit::Twips top)> moved;

  void Create(HWND host);

  // Pixels of the client area.
  void Place(const toolkit::Area& bar) { imgSep = bar; }

  // Offers a message of the host; true when it is used up.
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
  std::optional<int> grip_;  // where the pointer holds the bar, pixels below its top; none while it is not dragged
  toolkit::Twips dragTop_{};
};

}  // namespace conversation
