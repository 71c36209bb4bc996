#include "ui/toolkit/menu/menu_look.h"

#include <cstring>

#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

constexpr int kHeadPoints = 7;
constexpr char kHeadFace[] = "Small Fonts";

// The face of the heads is drawn dot by dot for 96 dots per inch and looks coarse when it is stretched; finer screens
// show the menu's own face at that size.
constexpr int kHeadFaceDpi = 96;

int PointsToHeight(int points) { return -::MulDiv(points, ScreenDpi().value, 72); }

void SetFace(LOGFONTA& font, const char* face) {
  std::strncpy(font.lfFaceName, face, LF_FACESIZE - 1);
  font.lfFaceName[LF_FACESIZE - 1] = '\0';
}

LOGFONTA SystemMenuFont() {
  NONCLIENTMETRICSA metrics{};
  metrics.cbSize = sizeof metrics;
  if (::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return metrics.lfMenuFont;
  LOGFONTA fallback{};
  fallback.lfHeight = PointsToHeight(9);
  SetFace(fallback, "MS Shell Dlg");
  return fallback;
}

}  // namespace

MenuFonts MakeMenuFonts(const MenuLook& look) {
  LOGFONTA font = SystemMenuFont();
  if (!look.FontName.empty()) SetFace(font, look.FontName.c_str());
  if (look.FontSize > 0) font.lfHeight = PointsToHeight(look.FontSize);
  LOGFONTA head = font;
  head.lfHeight = PointsToHeight(kHeadPoints);
  if (ScreenDpi().value == kHeadFaceDpi) SetFace(head, kHeadFace);
  return {Font(::CreateFontIndirectA(&font)), Font(::CreateFontIndirectA(&head))};
}

}  // namespace toolkit
