// Where an alert popup starts, how it slides in, and how often it flashes. Pure arithmetic: the window only moves
// itself to what comes out.
#pragma once

#include <algorithm>
#include <optional>

#include "ui/toolkit/units.h"

namespace conversation {

using toolkit::Twips;

enum class Corner { TopLeft = 1, TopRight, BottomLeft, BottomRight };

struct Screen {
  Twips width, height;  // the whole screen, not the work area
};

struct Place {
  Twips left, top;
};

inline constexpr Twips kStep{50};    // per animation tick
inline constexpr Twips kRaise{450};  // one step of the alert height setting

inline constexpr unsigned kSlideInterval = 10;   // milliseconds
inline constexpr unsigned kFlashInterval = 500;  // milliseconds
inline constexpr int kFlashes = 6;               // even, so that a popup ends in its first colour

constexpr bool IsTop(Corner corner) { return corner == Corner::TopLeft || corner == Corner::TopRight; }

// The corner of a stored setting; none for a value that means "leave the popup where it is".
constexpr std::optional<Corner> CornerOf(int popPos) {
  if (popPos < 1 || popPos > 4) return std::nullopt;
  return static_cast<Corner>(popPos);
}

// Just outside the screen, so that the first tick brings the first line into view.
constexpr Place StartOf(Corner corner, Screen screen, Twips width, Twips height) {
  const bool right = corner == Corner::TopRight || corner == Corner::BottomRight;
  return {right ? screen.width - width : Twips{0}, IsTop(corner) ? Twips{0} - height : screen.height};
}

// Where a popup without a corner stays: a little inside the top left, further left when its close button would not be
// on the screen.
constexpr Twips kInset{1500};
constexpr Place PlaceWithoutCorner(Screen screen, Twips width) {
  return {std::clamp(screen.width - width, Twips{0}, kInset), kInset};
}

// How far from the edge of the screen a popup comes to rest.
constexpr Twips RestOf(std::optional<Corner> corner, int alertHeight) {
  return corner ? Twips{kRaise.value * alertHeight} : kInset;
}

// The next top, or none once the popup rests at the given alert height.
constexpr std::optional<Twips> NextTop(Corner corner, Screen screen, Twips top, Twips height, int alertHeight) {
  const Twips rest{kRaise.value * alertHeight};
  if (IsTop(corner)) return top >= rest ? std::nullopt : std::optional(top + kStep);
  return screen.height - rest >= top + height ? std::nullopt : std::optional(top - kStep);
}

// Counts the flashes of one popup down.
class FlashCount {
 public:
  // True when this tick toggles the colours; false for a tick that comes after the last one.
  constexpr bool Tick() {
    if (left_ <= 0) return false;
    --left_;
    return true;
  }

  constexpr bool Done() const { return left_ <= 0; }

 private:
  int left_ = kFlashes;
};

}  // namespace conversation
