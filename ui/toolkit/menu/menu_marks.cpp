#include "ui/toolkit/menu/menu_marks.h"

#include <algorithm>
#include <array>

#include "ui/toolkit/handles.h"

namespace toolkit {
namespace {

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

}  // namespace

void DrawComplexMark(HDC dc, const RECT& box, bool checkBox) {
  const Font font = SymbolFont(Side(box));
  const Selected selected(dc, font.get());
  for (const Layer& layer : checkBox ? kCheckBox : kOption)
    DrawGlyph(dc, box, layer.glyph, ::GetSysColor(layer.colour));
}

void DrawFramedMark(HDC dc, const RECT& box, bool checkBox, COLORREF colour) {
  RECT frame = box;
  ::DrawEdge(dc, &frame, BDR_SUNKENOUTER, BF_RECT);
  const Font font = SymbolFont(Side(box));
  const Selected selected(dc, font.get());
  DrawGlyph(dc, box, checkBox ? kPlainCheck : kPlainOption, colour);
}

}  // namespace toolkit
