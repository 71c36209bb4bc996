// The layout of the composer: recipients on the left, the text on the right, a label above each. Pixels of the client
// area.
#pragma once

#include <algorithm>

#include "ui/toolkit/units.h"

namespace conversation {

using toolkit::Area;
using toolkit::operator""_dp;

inline constexpr toolkit::Twips kComposerWidth = 460_dp, kComposerHeight = 320_dp;
inline constexpr toolkit::Twips kComposerMinWidth = 300_dp, kComposerMinHeight = 230_dp;

struct ComposerParts {
  Area toLabel, messageLabel, recipients, text;
};

// `top` is the toolbar's lower edge, `line` the height of one line of text.
constexpr ComposerParts ComposerLayout(int width, int height, int top, int line, toolkit::Dpi dpi) {
  const int margin = toolkit::ToPixels(8_dp, dpi), gap = toolkit::ToPixels(3_dp, dpi);
  const int share = std::clamp(width * 3 / 10, toolkit::ToPixels(100_dp, dpi), toolkit::ToPixels(220_dp, dpi));
  const int labelTop = top + margin / 2, fieldTop = labelTop + line + gap;
  const int bottom = std::max(height - margin, fieldTop);
  const int textLeft = margin + share + margin, right = std::max(width - margin, textLeft);
  return {{margin, labelTop, margin + share, labelTop + line},
          {textLeft, labelTop, right, labelTop + line},
          {margin, fieldTop, margin + share, bottom},
          {textLeft, fieldTop, right, bottom}};
}

}  // namespace conversation
