// The size, layout, animation and flashing of an alert popup, and the line breaking of its text. Pure arithmetic, in
// twips. The picture, the sender's name and the two buttons are in the top line, the text fills the rest.
#pragma once

#include <algorithm>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "ui/toolkit/units.h"

namespace conversation {

using toolkit::ScreenSize;  // of the whole screen, not the work area
using toolkit::Twips;

enum class Corner { TopLeft = 1, TopRight, BottomLeft, BottomRight };

struct Point {
  Twips left, top;
};

inline constexpr Twips kStep{50};    // per animation tick
inline constexpr Twips kRaise{450};  // one step of the alert height setting

inline constexpr unsigned kSlideInterval = 10;   // milliseconds
inline constexpr unsigned kFlashInterval = 500;  // milliseconds
inline constexpr int kFlashes = 6;
static_assert(kFlashes % 2 == 0, "a popup must end with its first colour");

constexpr bool IsTop(Corner corner) { return corner == Corner::TopLeft || corner == Corner::TopRight; }

// The corner of a setting; nothing for values that mean "no animation".
constexpr std::optional<Corner> CornerOf(int popPos) {
  if (popPos < 1 || popPos > 4) return std::nullopt;
  return static_cast<Corner>(popPos);
}

// Just outside the screen, so that the first tick makes the edge visible.
constexpr Point StartOf(Corner corner, ScreenSize screen, Twips width, Twips height) {
  const bool right = corner == Corner::TopRight || corner == Corner::BottomRight;
  return {right ? screen.width - width : Twips{0}, IsTop(corner) ? Twips{0} - height : screen.height};
}

// Where a popup without a corner goes: near the top left, further left if the close button would be off the screen.
constexpr Twips kInset{1500};
constexpr Point PositionWithoutCorner(ScreenSize screen, Twips width) {
  return {std::clamp(screen.width - width, Twips{0}, kInset), kInset};
}

// The distance of a popup at rest from the edge of the screen.
constexpr Twips RestOf(std::optional<Corner> corner, int alertHeight) {
  return corner ? Twips{kRaise.value * alertHeight} : kInset;
}

// The next top, or nothing when the popup is at rest.
constexpr std::optional<Twips> NextTop(Corner corner, ScreenSize screen, Twips top, Twips height, int alertHeight) {
  const Twips rest{kRaise.value * alertHeight};
  if (IsTop(corner)) return top >= rest ? std::nullopt : std::optional(top + kStep);
  return screen.height - rest >= top + height ? std::nullopt : std::optional(top - kStep);
}

struct Size {
  Twips width, height;
};

struct Bounds {
  Twips left, top, width, height;
};

inline constexpr Twips kMinPopupWidth{2000};
inline constexpr Twips kBesideText{100};   // width of the popup beyond its text label
inline constexpr Twips kAroundText{300};   // height of the popup beyond its picture and text label
inline constexpr Twips kEdge{50};          // between the frame and the label
inline constexpr Twips kPictureLeft{155};  // aligned with the text, which has a margin in its label
inline constexpr Twips kGlyphSide{285};    // of the close and drop-down buttons

// The largest text label of a popup that fits on the screen at this distance from the edge, allowing for the last step
// of the slide; longer texts are wrapped, then scrolled. Leaves at least a few lines on a small screen.
constexpr Size LargestLabel(ScreenSize screen, Twips pictureHeight, Twips rest) {
  constexpr Twips readable{1200};
  const Twips left = screen.height - kStep - pictureHeight - kAroundText - std::max(rest, Twips{0});
  return {screen.width - kBesideText, std::max(left, readable)};
}

// At least the width that the narrowest popup has for it.
constexpr Twips LabelWidth(Twips textWidth) { return std::max(textWidth, kMinPopupWidth - kBesideText); }

constexpr Size PopupSize(Size label, Twips pictureHeight) {
  return {std::max(label.width + kBesideText, kMinPopupWidth), pictureHeight + label.height + kAroundText};
}

struct PopupParts {
  Bounds picture, sender, drop, close, label;
};

constexpr PopupParts PartsOf(Size popup, Size label, Size picture) {
  constexpr Twips gap{(kAroundText.value - kEdge.value) / 2};  // above and below the picture
  const Twips labelTop = popup.height - kEdge - label.height;
  const Twips buttonTop = Twips{(labelTop.value - kGlyphSide.value) / 2};
  const Twips closeLeft = popup.width - kEdge - kGlyphSide, dropLeft = closeLeft - kGlyphSide;
  const Twips senderLeft = kPictureLeft + picture.width + kBesideText;
  return {{kPictureLeft, gap, picture.width, picture.height},
          {senderLeft, gap, std::max(dropLeft - kEdge - senderLeft, Twips{0}), picture.height},
          {dropLeft, buttonTop, kGlyphSide, kGlyphSide},
          {closeLeft, buttonTop, kGlyphSide, kGlyphSide},
          {kEdge, labelTop, label.width, label.height}};
}

// Returns the size in bytes of the leading characters that fit into a line, of a text without line breaks.
using FitCount = std::function<std::size_t(std::string_view)>;

// The lines, as views into `text`. A line break (CR LF, CR, LF) ends a line, so one at the end does not start another.
// A line that does not fit is wrapped at a blank, which is dropped, or inside a word that is too long. At least one
// line.
std::vector<std::string_view> BreakLines(std::string_view text, const FitCount& fits);

}  // namespace conversation
