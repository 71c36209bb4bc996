#include "ui/options/user_page.h"

#include <algorithm>
#include <array>

#include "core/globals.h"
#include "core/text.h"
#include "net/packet.h"
#include "ui/options/option_values.h"
#include "ui/toolkit/controls.h"
#include "ui/toolkit/screen.h"

namespace options {
namespace {

using toolkit::AreaAt;
using toolkit::LineHeight;
using toolkit::Px;
using toolkit::SetArea;
using toolkit::operator""_dp;

// A colour that a name can have, 0x00BBGGRR.
struct Swatch {
  std::int32_t colour;
  toolkit::Caption name;  // for screen readers
};

constexpr std::array<Swatch, 16> kPalette{{
    {0x000000, {2101, "Black"}},
    {0x800000, {2102, "Dark blue"}},
    {0x008000, {2103, "Dark green"}},
    {0x808000, {2104, "Dark cyan"}},
    {0x000080, {2105, "Dark red"}},
    {0x800080, {2106, "Purple"}},
    {0x008080, {2107, "Olive"}},
    {0xC0C0C0, {2108, "Light grey"}},
    {0x808080, {2109, "Dark grey"}},
    {0xFF0000, {2110, "Blue"}},
    {0x00FF00, {2111, "Green"}},
    {0xFFFF00, {2112, "Cyan"}},
    {0x0000FF, {2113, "Red"}},
    {0xFF00FF, {2114, "Magenta"}},
    {0x00FFFF, {2115, "Yellow"}},
    {0xFFFFFF, {2116, "White"}},
}};

constexpr toolkit::Twips kSwatchWidth = 38_dp, kSwatchHeight = 30_dp, kFrameHeight = 84_dp;

constexpr DWORD kSwatchListStyle =
    LVS_ICON | LVS_SHAREIMAGELISTS | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_AUTOARRANGE | WS_TABSTOP;

// Draws a rectangle filled with a colour, with a border.
void DrawSwatch(HDC dc, const RECT& frame, COLORREF colour) {
  const toolkit::Brush fill(::CreateSolidBrush(colour));
  ::FillRect(dc, &frame, fill.get());
  ::FrameRect(dc, &frame, ::GetSysColorBrush(COLOR_BTNSHADOW));
}

// The result of a WM_CTLCOLOR message: text of this colour on the background of a text box.
LRESULT ColourText(WPARAM dc, std::int32_t colour) {
  ::SetTextColor(reinterpret_cast<HDC>(dc), toolkit::TextColour(colour));
  ::SetBkColor(reinterpret_cast<HDC>(dc), ::GetSysColor(COLOR_WINDOW));
  return reinterpret_cast<LRESULT>(::GetSysColorBrush(COLOR_WINDOW));
}

}  // namespace

// The name as others will see it, in a sunken frame.
class Preview : public toolkit::Window {
 public:
  void Load(HWND page) {
    Create({.className = "picPrevew", .style = WS_CHILD | WS_CLIPSIBLINGS, .exStyle = WS_EX_CONTROLPARENT}, "", {},
           page);
    lblPrevew = AddControl("STATIC", "<UName>", SS_CENTER | SS_NOPREFIX | SS_ENDELLIPSIS);
    toolkit::SetBold(lblPrevew);
    Show();
  }

  void SetName(const std::string& name) { ::SetWindowTextA(lblPrevew, name.c_str()); }

  void SetColour(std::int32_t colour) {
    colour_ = colour;
    ::InvalidateRect(lblPrevew, nullptr, TRUE);
  }

  void LayOut() override {
    const toolkit::Area client = toolkit::ClientAreaOf(hwnd());
    const int edge = Px(4_dp), line = LineHeight();
    SetArea(lblPrevew, AreaAt(edge, (client.bottom - line) / 2, client.right - 2 * edge, line));
  }

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
      case WM_CTLCOLORSTATIC:
        return ColourText(wParam, colour_);
      case WM_PAINT:
        Paint();
        return 0;
      default:
        return Window::Handle(message, wParam, lParam);
    }
  }

  void Paint() const {
    PAINTSTRUCT request{};
    const HDC dc = ::BeginPaint(hwnd(), &request);
    RECT area = toolkit::RectOf(toolkit::ClientAreaOf(hwnd()));
    ::FillRect(dc, &area, ::GetSysColorBrush(COLOR_WINDOW));
    ::DrawEdge(dc, &area, EDGE_SUNKEN, BF_RECT);
    ::EndPaint(hwnd(), &request);
  }

  HWND lblPrevew = nullptr;
  std::int32_t colour_ = 0;
};

UserPage::UserPage() : picPrevew(std::make_shared<Preview>()) {}

void UserPage::CreateControls() {
  lblcapName = AddLabel({2009, "Screen Name"});
  txtName = AddTextBox(kNameBox);
  toolkit::LimitBytes(txtName, net::kMaxName);
  lblcapColour = AddLabel({2008, "Screen Colour"});
  lvCol = AddControl(WC_LISTVIEWA, "", kSwatchListStyle, WS_EX_CLIENTEDGE);
  ListView_SetExtendedListViewStyle(lvCol, LVS_EX_DOUBLEBUFFER);
  Frame1 = AddControl("BUTTON", {2010, "Prevew"}, BS_GROUPBOX | WS_CLIPSIBLINGS);
  picPrevew->Load(hwnd());
}

void UserPage::AddCols() {
  const Scratch picBuf({Px(kSwatchWidth), Px(kSwatchHeight)});
  imlCol = picBuf.NewList(static_cast<int>(kPalette.size()));
  ListView_SetImageList(lvCol, imlCol.get(), LVSIL_NORMAL);
  for (std::size_t i = 0; i < kPalette.size(); ++i) {
    const Swatch& swatch = kPalette[i];
    picBuf.Add(imlCol.get(), [colour = static_cast<COLORREF>(swatch.colour)](HDC dc, const RECT& frame) {
      DrawSwatch(dc, frame, colour);
    });
    LVITEMA item{};
    item.mask = LVIF_IMAGE | LVIF_PARAM;
    item.iItem = static_cast<int>(i);
    item.iImage = static_cast<int>(i);
    item.lParam = swatch.colour;
    ::SendMessageA(lvCol, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    AddName(swatch.name, [this, index = item.iItem](const std::string& name) { SetSwatchName(index, name); });
  }
}

// For screen readers alone: the swatches are drawn without their texts.
void UserPage::SetSwatchName(int index, const std::string& name) {
  LVITEMA item{};
  item.mask = LVIF_TEXT;
  item.iItem = index;
  item.pszText = const_cast<char*>(name.c_str());
  ::SendMessageA(lvCol, LVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

void UserPage::LayOut() {
  const toolkit::Area page = toolkit::ClientAreaOf(hwnd());
  const int margin = Px(kMargin), line = LineHeight(), fieldTop = margin + line + Px(kGap);
  const int frameWidth = (page.right - 3 * margin) * 2 / 5, frameHeight = Px(kFrameHeight);
  const int nameWidth = page.right - 3 * margin - frameWidth, frameLeft = margin + nameWidth + margin;
  SetArea(lblcapName, AreaAt(margin, margin, nameWidth, line));
  SetArea(txtName, AreaAt(margin, fieldTop, nameWidth, FieldHeight()));
  SetArea(Frame1, AreaAt(frameLeft, margin, frameWidth, frameHeight));
  const int inner = Px(10_dp);
  SetArea(picPrevew->hwnd(), AreaAt(frameLeft + inner, margin + line + Px(4_dp), frameWidth - 2 * inner,
                                    frameHeight - line - 2 * inner + Px(6_dp)));
  BringToTop(picPrevew->hwnd());
  picPrevew->LayOut();
  const int colourTop = margin + frameHeight + Px(6_dp), listTop = colourTop + line + Px(kGap);
  SetArea(lblcapColour, AreaAt(margin, colourTop, page.right - 2 * margin, line));
  SetArea(lvCol, AreaAt(margin, listTop, page.right - 2 * margin, page.bottom - 2 * margin - listTop));
  const toolkit::Area list = toolkit::ClientAreaOf(lvCol);
  ListView_SetIconSpacing(lvCol, list.right / 8, (list.bottom - Px(4_dp)) / 2);
  ListView_Arrange(lvCol, LVA_DEFAULT);
}

void UserPage::InputSets() {
  ::SetWindowTextA(txtName, core::gUserName.c_str());
  colour_ = core::gColour;
  picPrevew->SetColour(colour_);
  SetCol(core::gColour);
}

// Both names: gCurName is sent and saved, and start-up continues with gUserName.
void UserPage::WriteSets() {
  core::gUserName = core::gCurName = toolkit::TrimmedTextOf(txtName);
  const int swatch = ListView_GetNextItem(lvCol, -1, LVNI_SELECTED);
  if (swatch >= 0) core::gColour = kPalette[static_cast<std::size_t>(swatch)].colour;
}

void UserPage::SetCol(std::int32_t colour) {
  const auto* const found = std::ranges::find(kPalette, colour, &Swatch::colour);
  if (found == kPalette.end()) return;
  const int index = static_cast<int>(found - kPalette.begin());
  ListView_SetItemState(lvCol, index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  ListView_EnsureVisible(lvCol, index, FALSE);
  lvCol_ItemClick(index);
}

int UserPage::Refusal(const core::Roster& users, bool ownNameIsTaken) const {
  return RefusalOf(toolkit::TrimmedTextOf(txtName), users, ownNameIsTaken);
}

bool UserPage::IsNameMissing() {
  const HWND focus = ::GetFocus();
  if (focus == txtName || !::IsChild(::GetParent(hwnd()), focus)) return false;
  const std::string text = toolkit::TextOf(txtName), name(core::Trim(text));
  if (name != text) ::SetWindowTextA(txtName, name.c_str());
  return name.empty();
}

std::span<const toolkit::Command> UserPage::Commands() const {
  static const toolkit::Command kCommands[] = {
      {kNameBox, &UserPage::txtName_Change, EN_CHANGE},
      {kNameBox, &UserPage::txtName_LostFocus, EN_KILLFOCUS},
  };
  return kCommands;
}

void UserPage::txtName_Change() { picPrevew->SetName(toolkit::TextOf(txtName)); }

void UserPage::txtName_LostFocus() { ::PostMessageA(::GetParent(hwnd()), kNameLeft, 0, 0); }

LRESULT UserPage::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_CTLCOLOREDIT) return ColourText(wParam, colour_);
  return Page::Handle(message, wParam, lParam);
}

LRESULT UserPage::OnNotify(NMHDR& header) {
  if (header.hwndFrom != lvCol) return 0;
  if (header.code == NM_CUSTOMDRAW) return DrawSwatchItem(reinterpret_cast<const NMLVCUSTOMDRAW&>(header));
  // The frames that DrawSwatchItem draws extend beyond the area that the list repaints by itself.
  if (header.code == LVN_ITEMCHANGED || header.code == NM_SETFOCUS || header.code == NM_KILLFOCUS)
    ::InvalidateRect(lvCol, nullptr, TRUE);
  if (header.code == LVN_ITEMCHANGED) {
    const auto& change = reinterpret_cast<const NMLISTVIEW&>(header);
    if ((change.uNewState & ~change.uOldState) & LVIS_SELECTED) lvCol_ItemClick(change.iItem);
  }
  return 0;
}

void UserPage::lvCol_ItemClick(int index) {
  colour_ = kPalette[static_cast<std::size_t>(index)].colour;
  ::InvalidateRect(txtName, nullptr, TRUE);
  picPrevew->SetColour(colour_);
}

// A list tints the image of a selected item, which would falsify the colour. A frame marks the selection instead.
LRESULT UserPage::DrawSwatchItem(const NMLVCUSTOMDRAW& draw) const {
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  const int index = static_cast<int>(draw.nmcd.dwItemSpec);
  RECT cell{};
  ListView_GetItemRect(lvCol, index, &cell, LVIR_ICON);
  RECT swatch{0, 0, Px(kSwatchWidth), Px(kSwatchHeight)};
  ::OffsetRect(&swatch, (cell.left + cell.right - swatch.right) / 2, (cell.top + cell.bottom - swatch.bottom) / 2);
  ::ImageList_Draw(imlCol.get(), index, draw.nmcd.hdc, swatch.left, swatch.top, ILD_NORMAL);
  if (ListView_GetItemState(lvCol, index, LVIS_SELECTED)) {
    for (int i = Px(1_dp); i <= Px(3_dp); ++i) {
      RECT frame = swatch;
      ::InflateRect(&frame, i, i);
      ::FrameRect(draw.nmcd.hdc, &frame, ::GetSysColorBrush(COLOR_HIGHLIGHT));
    }
  }
  if (::GetFocus() == lvCol && ListView_GetItemState(lvCol, index, LVIS_FOCUSED)) {
    ::InflateRect(&swatch, Px(5_dp), Px(5_dp));
    ::DrawFocusRect(draw.nmcd.hdc, &swatch);
  }
  return CDRF_SKIPDEFAULT;
}

}  // namespace options
