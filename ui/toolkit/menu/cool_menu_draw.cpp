#include "ui/toolkit/menu/cool_menu_draw.h"

#include <windows.h>
#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <span>

#include "core/code_page.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

// The image size in a menu without an image list, for its marks.
constexpr Twips kDesignImage = 16_dp;

constexpr Twips kImageGap = 2_dp;       // between an image and the edge around it when it is highlighted
constexpr Twips kSpare = 5_dp;          // on both sides of the image's frame
constexpr Twips kRowMargin = 6_dp;      // height of an item beyond its caption or image
constexpr Twips kHeadingMargin = 5_dp;  // height of a heading beyond its text
constexpr Twips kMark = 14_dp;          // side of a check or option mark
constexpr Twips kHeadIndent = 6_dp, kHeadGap = 4_dp;

constexpr int kHeadingPoints = 7;
constexpr char kHeadingFace[] = "Small Fonts";

// The typeface of the headings is a bitmap font for 96 dpi, which looks coarse when scaled; at higher resolutions the
// menu's own typeface is used.
constexpr int kHeadingFaceDpi = 96;

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

class SavedDc {
 public:
  explicit SavedDc(HDC dc) : dc_(dc), state_(::SaveDC(dc)) {}
  SavedDc(const SavedDc&) = delete;
  SavedDc& operator=(const SavedDc&) = delete;
  ~SavedDc() { ::RestoreDC(dc_, state_); }

 private:
  HDC dc_;
  int state_;
};

SIZE ImageSize(HIMAGELIST images) {
  int width = 0, height = 0;
  if (!images || !::ImageList_GetIconSize(images, &width, &height)) width = height = Px(kDesignImage);
  return {width, height};
}

SIZE TextSize(HDC dc, HFONT font, const std::string& text) {
  const ScopedSelection selected(dc, font);
  RECT bounds{};
  ::DrawTextW(dc, core::Wide(text).c_str(), -1, &bounds, DT_CALCRECT | DT_SINGLELINE);
  return {bounds.right, bounds.bottom};
}

RECT Centred(const RECT& outer, LONG width, LONG height) {
  const LONG left = outer.left + (outer.right - outer.left - width) / 2;
  const LONG top = outer.top + (outer.bottom - outer.top - height) / 2;
  return {left, top, left + width, top + height};
}

// The parts of a row of a drop-down, from left to right.
struct RowParts {
  RECT imageFrame;  // the image with the edge around it
  RECT caption;
};

RowParts PartsOf(const RECT& row, SIZE image) {
  const LONG frameWidth = image.cx + 2 * Px(kImageGap), frameHeight = image.cy + 2 * Px(kImageGap);
  const LONG left = row.left + Px(1_dp);
  RECT bounds = Centred({left, row.top, left + frameWidth, row.bottom}, frameWidth, frameHeight);
  return {bounds, {bounds.right + Px(kSpare - 1_dp), row.top, row.right, row.bottom}};
}

void Fill(HDC dc, const RECT& area, COLORREF colour) {
  const Brush brush(::CreateSolidBrush(colour));
  ::FillRect(dc, &area, brush.get());
}

void EtchedLine(HDC dc, LONG left, LONG right, LONG y) {
  RECT line{left, y, right, y + 2};
  if (right > left) ::DrawEdge(dc, &line, EDGE_ETCHED, BF_TOP);
}

// The symbol font has the parts of the system's controls: each glyph is a layer, and all are drawn at the same
// position.
struct Layer {
  char glyph;
  int colour;  // a system colour
};
using Layers = std::array<Layer, 6>;

// Darker outside than inside, so that the shape is visible on white and on grey menus.
constexpr Layers kCheckBox{{{'g', COLOR_WINDOW},
                            {'c', COLOR_3DDKSHADOW},
                            {'d', COLOR_3DSHADOW},
                            {'e', COLOR_3DLIGHT},
                            {'f', COLOR_3DHIGHLIGHT},
                            {'b', COLOR_WINDOWTEXT}}};
constexpr Layers kOption{{{'n', COLOR_WINDOW},
                          {'j', COLOR_3DDKSHADOW},
                          {'k', COLOR_3DSHADOW},
                          {'l', COLOR_3DLIGHT},
                          {'m', COLOR_3DHIGHLIGHT},
                          {'i', COLOR_WINDOWTEXT}}};

constexpr char kPlainCheck = 'a', kPlainOption = 'h';

Font SymbolFont(int height) {
  LOGFONTA font{};
  font.lfHeight = -height;
  font.lfCharSet = SYMBOL_CHARSET;
  font.lfQuality = ANTIALIASED_QUALITY;  // with ClearType the edges of the layers would not match
  std::copy_n("Marlett", sizeof "Marlett", font.lfFaceName);
  return Font(::CreateFontIndirectA(&font));
}

void DrawGlyph(HDC dc, RECT bounds, char glyph, COLORREF colour) {
  ::SetTextColor(dc, colour);
  ::DrawTextA(dc, &glyph, 1, &bounds, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
}

int Side(const RECT& bounds) {
  return static_cast<int>(std::min(bounds.right - bounds.left, bounds.bottom - bounds.top));
}

// Draws a raised square or circle from layered glyphs, each in its own system colour, with the mark on top.
void DrawComplexMark(HDC dc, const RECT& bounds, bool checkBox) {
  const Font font = SymbolFont(Side(bounds));
  const ScopedSelection selected(dc, font.get());
  for (const Layer& layer : checkBox ? kCheckBox : kOption)
    DrawGlyph(dc, bounds, layer.glyph, ::GetSysColor(layer.colour));
}

// Draws the system's mark in a sunken frame, in the given colour.
void DrawFramedMark(HDC dc, const RECT& bounds, bool checkBox, COLORREF colour) {
  RECT frame = bounds;
  ::DrawEdge(dc, &frame, BDR_SUNKENOUTER, BF_RECT);
  const Font font = SymbolFont(Side(bounds));
  const ScopedSelection selected(dc, font.get());
  DrawGlyph(dc, bounds, checkBox ? kPlainCheck : kPlainOption, colour);
}

// The embossed image of a disabled item.
constexpr DWORD kPatternWhereBlack = 0x00B8074A;  // the brush where the mask is black, the background elsewhere

struct Canvas {
  Bitmap bitmap;
  std::span<std::uint32_t> pixels;  // 0x00RRGGBB
};

Canvas MakeCanvas(int width, int height) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  Bitmap bitmap(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!bitmap) return {};
  const auto count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  return {std::move(bitmap), {static_cast<std::uint32_t*>(bits), count}};
}

// Light parts belong to the background; only what is dark on white is part of the shape.
bool IsShape(std::uint32_t pixel) {
  const std::uint32_t red = pixel >> 16 & 0xFF, green = pixel >> 8 & 0xFF, blue = pixel & 0xFF;
  return red * 299 + green * 587 + blue * 114 < 200 * 1000;
}

// One bit per pixel: black where the image has a shape, white elsewhere.
Bitmap MakeMask(HDC scratch, HIMAGELIST images, int index, int width, int height) {
  const Canvas canvas = MakeCanvas(width, height);
  Bitmap mask(::CreateBitmap(width, height, 1, 1, nullptr));
  const MemoryDc source(::CreateCompatibleDC(nullptr));
  if (canvas.pixels.empty() || !mask || !source) return {};
  const ScopedSelection selected(source.get(), canvas.bitmap.get());
  ::PatBlt(source.get(), 0, 0, width, height, WHITENESS);
  ::ImageList_Draw(images, index, source.get(), 0, 0, ILD_TRANSPARENT);
  ::GdiFlush();
  for (std::uint32_t& pixel : canvas.pixels) pixel = IsShape(pixel) ? 0x000000 : 0xFFFFFF;
  const ScopedSelection target(scratch, mask.get());
  ::BitBlt(scratch, 0, 0, width, height, source.get(), 0, 0, SRCCOPY);
  return mask;
}

void PaintShape(HDC dc, POINT at, int width, int height, HDC mask, int systemColour) {
  const ScopedSelection brush(dc, ::GetSysColorBrush(systemColour));
  ::BitBlt(dc, static_cast<int>(at.x), static_cast<int>(at.y), width, height, mask, 0, 0, kPatternWhereBlack);
}

// Draws image `index` at the point, in the light and dark 3D colours of the system. Draws nothing when out of memory.
void DrawEmbossed(HDC dc, HIMAGELIST images, int index, POINT at) {
  int width = 0, height = 0;
  if (!::ImageList_GetIconSize(images, &width, &height)) return;
  const MemoryDc maskDc(::CreateCompatibleDC(nullptr));
  const Bitmap mask = MakeMask(maskDc.get(), images, index, width, height);
  if (!mask) return;
  const ScopedSelection selected(maskDc.get(), mask.get());
  const COLORREF formerText = ::SetTextColor(dc, RGB(0, 0, 0)), formerBack = ::SetBkColor(dc, RGB(255, 255, 255));
  PaintShape(dc, {at.x + 1, at.y + 1}, width, height, maskDc.get(), COLOR_3DHIGHLIGHT);
  PaintShape(dc, at, width, height, maskDc.get(), COLOR_3DSHADOW);
  ::SetTextColor(dc, formerText);
  ::SetBkColor(dc, formerBack);
}

struct ItemState {
  bool selected, disabled, checked, hidesMnemonic;
};

ItemState StateOf(UINT state) {
  return {(state & (ODS_SELECTED | ODS_HOTLIGHT)) != 0, (state & (ODS_DISABLED | ODS_GRAYED)) != 0,
          (state & ODS_CHECKED) != 0, (state & ODS_NOACCEL) != 0};
}

// Draws one item as requested by the system.
class ItemPainter {
 public:
  ItemPainter(const DRAWITEMSTRUCT& request, const MenuLook& look, const MenuFonts& fonts, const CMyItemData& data)
      : dc_(request.hDC),
        item_(request.rcItem),
        state_(StateOf(request.itemState)),
        look_(look),
        fonts_(fonts),
        data_(data) {}

  void Draw() const {
    Fill(dc_, item_, ::GetSysColor(data_.bMainMenu ? COLOR_MENUBAR : COLOR_MENU));
    if (IsSeparator(data_)) {
      DrawHeading();
    } else if (data_.bMainMenu) {
      DrawBarItem();
    } else {
      DrawRow();
    }
  }

 private:
  // A line across the row, interrupted by the text of the heading.
  void DrawHeading() const {
    const LONG left = item_.left + Px(1_dp), right = item_.right - Px(1_dp),
               middle = (item_.top + item_.bottom) / 2 - 1;
    if (data_.sMenuText.empty()) return EtchedLine(dc_, left, right, middle);
    const LONG textLeft = item_.left + Px(kHeadIndent + kHeadGap);
    const LONG textWidth = TextSize(dc_, fonts_.MenuFontSep.get(), data_.sMenuText).cx;
    EtchedLine(dc_, left, textLeft - Px(kHeadGap), middle);
    EtchedLine(dc_, textLeft + textWidth + Px(kHeadGap), right, middle);
    const ScopedSelection selected(dc_, fonts_.MenuFontSep.get());
    DrawCaption({textLeft, item_.top, item_.right, item_.bottom}, PaintColour(look_.ForeColor), 0);
  }

  void DrawBarItem() const {
    if (state_.selected) Fill(dc_, item_, PaintColour(look_.SelectColor));
    DrawCaption(item_, CaptionColour(state_.selected), DT_CENTER | HiddenPrefix());
  }

  void DrawRow() const {
    const RowParts parts = PartsOf(item_, ImageSize(look_.ilHandle));
    if (state_.selected) DrawHighlight(parts.caption);
    if (data_.iButton >= 0 && look_.ilHandle) {
      DrawImage(parts.imageFrame);
    } else if (data_.bAsMark && state_.checked) {
      DrawMark(Centred(parts.imageFrame, Px(kMark), Px(kMark)));
    }
    DrawCaption(parts.caption, CaptionColour(state_.selected), HiddenPrefix());
  }

  void DrawHighlight(RECT caption) const {
    caption.left -= Px(kSpare - 2_dp);
    Fill(dc_, look_.FullSelect ? item_ : caption, PaintColour(look_.SelectColor));
  }

  // The frame of a highlighted image keeps the menu's colour, for which the images are designed.
  void DrawImage(RECT bounds) const {
    const SIZE size = ImageSize(look_.ilHandle);
    const RECT image = Centred(bounds, size.cx, size.cy);
    const bool pressed = state_.checked && data_.bAsMark;
    if (state_.selected || pressed) {
      Fill(dc_, bounds, ::GetSysColor(COLOR_MENU));
      ::DrawEdge(dc_, &bounds, pressed ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
    }
    if (state_.disabled && look_.ColorEmbossed) {
      DrawEmbossed(dc_, look_.ilHandle, data_.iButton, {image.left, image.top});
    } else {
      ::ImageList_Draw(look_.ilHandle, data_.iButton, dc_, static_cast<int>(image.left), static_cast<int>(image.top),
                       ILD_TRANSPARENT);
    }
  }

  // Beside a plain mark only the caption is highlighted.
  void DrawMark(const RECT& mark) const {
    if (look_.ComplexChecks) {
      DrawComplexMark(dc_, mark, data_.bAsCheck);
    } else {
      DrawFramedMark(dc_, mark, data_.bAsCheck, CaptionColour(state_.selected && look_.FullSelect));
    }
  }

  COLORREF CaptionColour(bool highlighted) const {
    if (state_.disabled) return ::GetSysColor(COLOR_GRAYTEXT);
    return highlighted ? ::GetSysColor(COLOR_HIGHLIGHTTEXT) : PaintColour(look_.ForeColor);
  }

  UINT HiddenPrefix() const { return state_.hidesMnemonic ? DT_HIDEPREFIX : 0u; }

  void DrawCaption(RECT area, COLORREF colour, UINT format) const {
    ::SetTextColor(dc_, colour);
    ::DrawTextW(dc_, core::Wide(data_.sMenuText).c_str(), -1, &area, DT_SINGLELINE | DT_VCENTER | format);
  }

  HDC dc_;
  RECT item_;
  ItemState state_;
  const MenuLook& look_;
  const MenuFonts& fonts_;
  const CMyItemData& data_;
};

}  // namespace

MenuFonts MakeMenuFonts(const MenuLook& look) {
  LOGFONTA font = SystemMenuFont();
  if (!look.FontName.empty()) SetFace(font, look.FontName.c_str());
  if (look.FontSize > 0) font.lfHeight = PointsToHeight(look.FontSize);
  LOGFONTA heading = font;
  heading.lfHeight = PointsToHeight(kHeadingPoints);
  if (ScreenDpi().value == kHeadingFaceDpi) SetFace(heading, kHeadingFace);
  return {Font(::CreateFontIndirectA(&font)), Font(::CreateFontIndirectA(&heading))};
}

SIZE MeasureMenuItem(HDC dc, const MenuLook& look, const MenuFonts& fonts, const CMyItemData& data) {
  if (IsSeparator(data) && data.sMenuText.empty()) return {0, ::GetSystemMetrics(SM_CYMENU) / 2};
  const SIZE text = TextSize(dc, fonts.MenuFont.get(), data.sMenuText), image = ImageSize(look.ilHandle);
  if (data.bMainMenu) return {text.cx, text.cy};
  // Windows adds the width of a check mark to owner-drawn items.
  const LONG width = text.cx + 2 * (image.cx + Px(kImageGap)) + Px(kSpare) - (::GetSystemMetrics(SM_CXMENUCHECK) - 1);
  if (IsHeading(data)) return {width, TextSize(dc, fonts.MenuFontSep.get(), data.sMenuText).cy + Px(kHeadingMargin)};
  return {width, std::max(text.cy, image.cy) + Px(kRowMargin)};
}

void DrawMenuItem(const DRAWITEMSTRUCT& request, const MenuLook& look, const MenuFonts& fonts,
                  const CMyItemData& data) {
  const SavedDc saved(request.hDC);
  ::SelectObject(request.hDC, fonts.MenuFont.get());
  ::SetBkMode(request.hDC, TRANSPARENT);
  ItemPainter(request, look, fonts, data).Draw();
}

}  // namespace toolkit
