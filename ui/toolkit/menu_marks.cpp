#include "ui/toolkit/menu_marks.h"

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

constexpr Layers kCheckBox{{{'g', COLOR_WINDOW},
                            {'c', COLOR_3DSHADOW},
                            {'d', COLOR_3DHIGHLIGHT},
                            {'e', COLOR_3DDKSHADOW},
                            {'f', COLOR_3DLIGHT},
                            {'b', COLOR_WINDOWTEXT}}};
constexpr Layers kOption{{{'n', COLOR_WINDOW},
                          {'j', COLOR_3DSHADOW},
                          {'k', COLOR_3DHIGHLIGHT},
                          {'l', COLOR_3DDKSHADOW},
                          {'m', COLOR_3DLIGHT},
                          {'i', COLOR_WINDOWTEXT}}};

constexpr char kPlainCheck = 'a', kPlainOption = 'h';

Font SymbolFont(int height) {
  LOGFONTA font{};
  font.lfHeight = -height;
  font.lfCharSet = SYMBOL_CHARSET;
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
