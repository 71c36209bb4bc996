#include "ui/toolkit/menu/cool_menu_draw.h"

#include <algorithm>
#include <array>

#include "core/wide_text_win32.h"
#include "ui/toolkit/menu/embossed_image.h"
#include "ui/toolkit/paint_colour.h"
#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

// Room for an image in a menu without an image list, where marks still need it.
constexpr Twips kDesignImage = 16_dp;

constexpr Twips kImageGap = 2_dp;    // between an image and the edge that is drawn round it when it is highlighted
constexpr Twips kSpare = 5_dp;       // before the image box and between it and the caption
constexpr Twips kRowMargin = 6_dp;   // height of an item beyond its caption or image
constexpr Twips kHeadMargin = 5_dp;  // height of a head beyond its text
constexpr Twips kMark = 14_dp;       // side of a check or option mark
constexpr Twips kHeadIndent = 6_dp, kHeadGap = 4_dp;

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
  const Selected selected(dc, font);
  RECT bounds{};
  ::DrawTextW(dc, core::Wide(text).c_str(), -1, &bounds, DT_CALCRECT | DT_SINGLELINE);
  return {bounds.right, bounds.bottom};
}

RECT Centred(const RECT& outer, LONG width, LONG height) {
  const LONG left = outer.left + (outer.right - outer.left - width) / 2;
  const LONG top = outer.top + (outer.bottom - outer.top - height) / 2;
  return {left, top, left + width, top + height};
}

// The parts of one row of a drop-down, from left to right.
struct RowParts {
  RECT imageBox;  // the image with the edge round it
  RECT caption;
};

RowParts PartsOf(const RECT& row, SIZE image) {
  const LONG boxWidth = image.cx + 2 * Px(kImageGap), boxHeight = image.cy + 2 * Px(kImageGap);
  const LONG left = row.left + Px(1_dp);
  RECT box = Centred({left, row.top, left + boxWidth, row.bottom}, boxWidth, boxHeight);
  return {box, {box.right + Px(kSpare - 1_dp), row.top, row.right, row.bottom}};
}

void Fill(HDC dc, const RECT& area, COLORREF colour) {
  const Brush brush(::CreateSolidBrush(colour));
  ::FillRect(dc, &area, brush.get());
}

void EtchedLine(HDC dc, LONG left, LONG right, LONG y) {
  RECT line{left, y, right, y + 2};
  if (right > left) ::DrawEdge(dc, &line, EDGE_ETCHED, BF_TOP);
}

// A line across the row that breaks off for the text of the head.
void DrawHead(HDC dc, const RECT& row, const MenuLook& look, const MenuFonts& fonts, const CMyItemData& data) {
  const LONG middle = (row.top + row.bottom) / 2 - 1;
  if (data.sMenuText.empty()) return EtchedLine(dc, row.left + Px(1_dp), row.right - Px(1_dp), middle);
  const LONG textLeft = row.left + Px(kHeadIndent + kHeadGap);
  const LONG textWidth = TextSize(dc, fonts.MenuFontSep.get(), data.sMenuText).cx;
  EtchedLine(dc, row.left + Px(1_dp), textLeft - Px(kHeadGap), middle);
  EtchedLine(dc, textLeft + textWidth + Px(kHeadGap), row.right - Px(1_dp), middle);
  const Selected selected(dc, fonts.MenuFontSep.get());
  RECT text{textLeft, row.top, row.right, row.bottom};
  ::SetTextColor(dc, PaintColour(look.ForeColor));
  ::DrawTextW(dc, core::Wide(data.sMenuText).c_str(), -1, &text, DT_SINGLELINE | DT_VCENTER);
}

struct ItemState {
  bool selected, disabled, checked, hidesMnemonic;
};

ItemState StateOf(UINT state) {
  return {(state & (ODS_SELECTED | ODS_HOTLIGHT)) != 0, (state & (ODS_DISABLED | ODS_GRAYED)) != 0,
          (state & ODS_CHECKED) != 0, (state & ODS_NOACCEL) != 0};
}

// The edge box of a highlighted image keeps the menu's colour, on which the images are drawn to be seen.
void DrawImage(HDC dc, RECT box, const MenuLook& look, const CMyItemData& data, ItemState state) {
  const SIZE size = ImageSize(look.ilHandle);
  const RECT image = Centred(box, size.cx, size.cy);
  const bool pressed = state.checked && data.bAsMark;
  if (state.selected || pressed) {
    Fill(dc, box, ::GetSysColor(COLOR_MENU));
    ::DrawEdge(dc, &box, pressed ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
  }
  if (state.disabled && look.ColorEmbossed) {
    DrawEmbossed(dc, look.ilHandle, data.iButton, {image.left, image.top});
  } else {
    ::ImageList_Draw(look.ilHandle, data.iButton, dc, static_cast<int>(image.left), static_cast<int>(image.top),
                     ILD_TRANSPARENT);
  }
}

// The symbol font holds the parts of the system's controls: each glyph is one layer, all are drawn at the same place.
struct Layer {
  char glyph;
  int colour;  // a system colour
};
using Layers = std::array<Layer, 6>;

// Outside darker than inside, so that the shape stands out on a white menu as well as on a grey one.
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
  font.lfQuality = ANTIALIASED_QUALITY;  // coloured edges would not match from layer to layer
  std::copy_n("Marlett", sizeof "Marlett", font.lfFaceName);
  return Font(::CreateFontIndirectA(&font));
}

void DrawGlyph(HDC dc, RECT box, char glyph, COLORREF colour) {
  ::SetTextColor(dc, colour);
  ::DrawTextA(dc, &glyph, 1, &box, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
}

int Side(const RECT& box) { return static_cast<int>(std::min(box.right - box.left, box.bottom - box.top)); }

// A raised box or circle from layered glyphs, each in a system colour of its own, with the mark on top.
void DrawComplexMark(HDC dc, const RECT& box, bool checkBox) {
  const Font font = SymbolFont(Side(box));
  const Selected selected(dc, font.get());
  for (const Layer& layer : checkBox ? kCheckBox : kOption)
    DrawGlyph(dc, box, layer.glyph, ::GetSysColor(layer.colour));
}

// The system's own mark in a sunken frame, in the given colour.
void DrawFramedMark(HDC dc, const RECT& box, bool checkBox, COLORREF colour) {
  RECT frame = box;
  ::DrawEdge(dc, &frame, BDR_SUNKENOUTER, BF_RECT);
  const Font font = SymbolFont(Side(box));
  const Selected selected(dc, font.get());
  DrawGlyph(dc, box, checkBox ? kPlainCheck : kPlainOption, colour);
}

COLORREF CaptionColour(const MenuLook& look, ItemState state) {
  if (state.disabled) return ::GetSysColor(COLOR_GRAYTEXT);
  return state.selected ? ::GetSysColor(COLOR_HIGHLIGHTTEXT) : PaintColour(look.ForeColor);
}

void DrawMark(HDC dc, const RECT& box, const MenuLook& look, const CMyItemData& data, ItemState state) {
  const RECT mark = Centred(box, Px(kMark), Px(kMark));
  if (look.ComplexChecks) {
    DrawComplexMark(dc, mark, data.bAsCheck);
  } else {
    if (!look.FullSelect) state.selected = false;  // the highlight ends before the mark
    DrawFramedMark(dc, mark, data.bAsCheck, CaptionColour(look, state));
  }
}

void DrawRow(HDC dc, const RECT& row, const MenuLook& look, const CMyItemData& data, ItemState state) {
  const RowParts parts = PartsOf(row, ImageSize(look.ilHandle));
  const bool hasImage = data.iButton >= 0 && look.ilHandle;
  if (state.selected) {
    RECT lit = look.FullSelect ? row : parts.caption;
    if (!look.FullSelect) lit.left -= Px(kSpare - 2_dp);
    Fill(dc, lit, PaintColour(look.SelectColor));
  }
  if (hasImage) {
    DrawImage(dc, parts.imageBox, look, data, state);
  } else if (data.bAsMark && state.checked) {
    DrawMark(dc, parts.imageBox, look, data, state);
  }
  RECT caption = parts.caption;
  ::SetTextColor(dc, CaptionColour(look, state));
  ::DrawTextW(dc, core::Wide(data.sMenuText).c_str(), -1, &caption,
              DT_SINGLELINE | DT_VCENTER | (state.hidesMnemonic ? DT_HIDEPREFIX : 0u));
}

void DrawBarItem(HDC dc, RECT item, const MenuLook& look, const CMyItemData& data, ItemState state) {
  if (state.selected) Fill(dc, item, PaintColour(look.SelectColor));
  ::SetTextColor(dc, CaptionColour(look, state));
  ::DrawTextW(dc, core::Wide(data.sMenuText).c_str(), -1, &item,
              DT_SINGLELINE | DT_VCENTER | DT_CENTER | (state.hidesMnemonic ? DT_HIDEPREFIX : 0u));
}

}  // namespace

SIZE MeasureMenuItem(HDC dc, const MenuLook& look, const MenuFonts& fonts, const CMyItemData& data) {
  if (IsSeparator(data) && data.sMenuText.empty()) return {0, ::GetSystemMetrics(SM_CYMENU) / 2};
  const SIZE text = TextSize(dc, fonts.MenuFont.get(), data.sMenuText), image = ImageSize(look.ilHandle);
  if (data.bMainMenu) return {text.cx, text.cy};
  // Windows itself widens owner-drawn items by the width of a check mark.
  const LONG width = text.cx + 2 * (image.cx + Px(kImageGap)) + Px(kSpare) - (::GetSystemMetrics(SM_CXMENUCHECK) - 1);
  if (IsHead(data)) return {width, TextSize(dc, fonts.MenuFontSep.get(), data.sMenuText).cy + Px(kHeadMargin)};
  return {width, std::max(text.cy, image.cy) + Px(kRowMargin)};
}

void DrawMenuItem(const DRAWITEMSTRUCT& request, const MenuLook& look, const MenuFonts& fonts,
                  const CMyItemData& data) {
  const HDC dc = request.hDC;
  const SavedDc saved(dc);
  ::SelectObject(dc, fonts.MenuFont.get());
  ::SetBkMode(dc, TRANSPARENT);
  Fill(dc, request.rcItem, ::GetSysColor(data.bMainMenu ? COLOR_MENUBAR : COLOR_MENU));
  if (IsSeparator(data)) {
    DrawHead(dc, request.rcItem, look, fonts, data);
  } else if (data.bMainMenu) {
    DrawBarItem(dc, request.rcItem, look, data, StateOf(request.itemState));
  } else {
    DrawRow(dc, request.rcItem, look, data, StateOf(request.itemState));
  }
}

}  // namespace toolkit
