// How large an alert popup is and where its parts stand. The picture, the sender's name and the two buttons share the
// top line, the text fills the rest. Twips.
#pragma once

#include <algorithm>

#include "ui/conversation/popup_motion.h"

namespace conversation {

struct Size {
  Twips width, height;
};

struct Box {
  Twips left, top, width, height;
};

inline constexpr Twips kMinPopupWidth{2000};
inline constexpr Twips kBesideText{100};   // what the popup is wider than its text label
inline constexpr Twips kAroundText{300};   // what it is higher than picture and text label
inline constexpr Twips kEdge{50};          // between the frame and the label
inline constexpr Twips kPictureLeft{155};  // in line with the text, which has a margin inside its label
inline constexpr Twips kGlyphSide{285};    // of the close and drop-down buttons

// The largest text label of a popup that stays whole on the screen when it rests so far from the edge; beyond it the
// text is wrapped, then scrolled. The last step of the slide may carry it a little beyond its rest. A low screen or a
// great alert height still leaves a few lines to read.
constexpr Size LargestLabel(Screen screen, Twips pictureHeight, Twips rest) {
  constexpr Twips readable{1200};
  const Twips left = screen.height - kStep - pictureHeight - kAroundText - std::max(rest, Twips{0});
  return {screen.width - kBesideText, std::max(left, readable)};
}

// A short text still gets a label as wide as the narrowest popup has room for.
constexpr Twips LabelWidth(Twips textWidth) { return std::max(textWidth, kMinPopupWidth - kBesideText); }

constexpr Size PopupSize(Size label, Twips pictureHeight) {
  return {std::max(label.width + kBesideText, kMinPopupWidth), pictureHeight + label.height + kAroundText};
}

struct PopupParts {
  Box picture, sender, drop, close, label;
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

}  // namespace conversation
