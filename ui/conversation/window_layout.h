// The layouts of the composer and of a chat window. Pixels of the client area, except for sizes and limits of windows
// and the splitter bar, which are twips.
#pragma once

#include <algorithm>

#include "ui/toolkit/units.h"

namespace conversation {

using toolkit::Area;
using toolkit::Twips;
using toolkit::operator""_dp;

// The composer: recipients on the left, the text on the right, a label above each.
inline constexpr Twips kComposerWidth = 460_dp, kComposerHeight = 320_dp;
inline constexpr Twips kComposerMinWidth = 300_dp, kComposerMinHeight = 230_dp;

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

// A chat window, from top to bottom: participants, splitter bar, conversation, input line with the Send button beside
// it, status line.
inline constexpr Twips kChatMinWidth{2000}, kChatMinHeight{3200};

// The bar leaves two rows of participants above it and the input line below it.
inline constexpr Twips kMinAboveBar{400}, kMinBelowBar{1700}, kFirstBarTop{700};

// The nearest allowed position of the bar in a window of this height, including the frame.
constexpr Twips BarTopWithin(Twips wanted, Twips windowHeight) {
  return std::max(std::min(wanted, windowHeight - kMinBelowBar), kMinAboveBar);
}

struct ChatSizes {
  int width, height;          // of the client area
  int barTop;                 // as requested by the user
  int sendWidth, sendHeight;  // of the Send button
  bool status;
};

struct ChatParts {
  Area users, bar, conversation, typed, send, status;
};

constexpr ChatParts ChatLayout(const ChatSizes& sizes, toolkit::Dpi dpi) {
  const int margin = toolkit::ToPixels(4_dp, dpi), barHeight = toolkit::ToPixels(6_dp, dpi);
  const int left = margin, right = std::max(sizes.width - margin, left);
  const int bottom = std::max(sizes.height - (sizes.status ? toolkit::ToPixels(20_dp, dpi) : margin), 0);
  const int sendLeft = std::max(right - sizes.sendWidth, left);
  const int barTop = std::max(std::min(sizes.barTop, bottom - barHeight), margin);
  const int barBottom = barTop + barHeight;
  const int typedTop =
      std::max(bottom - sizes.sendHeight, barBottom);  // moves down when the bar is at its lowest position
  return {.users = {left, margin, right, barTop},
          .bar = {0, barTop, sizes.width, barBottom},
          .conversation = {left, barBottom, right, std::max(typedTop - margin, barBottom)},
          .typed = {left, typedTop, std::max(sendLeft - margin, left), std::max(bottom, typedTop)},
          .send = {sendLeft, typedTop, right, std::max(bottom, typedTop)},
          .status = {left, bottom, right, std::max(sizes.height, bottom)}};
}

}  // namespace conversation
