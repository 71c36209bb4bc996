// The options dialog: the places of its controls.
#include <algorithm>
#include <utility>

#include "ui/options/frm_opt.h"
#include "ui/options/frm_opt_parts.h"
#include "ui/toolkit/screen.h"

namespace options {
namespace {

using toolkit::Px;
using toolkit::operator""_dp;

constexpr toolkit::Twips kPageWidth = 450_dp, kPageHeight = 260_dp, kMargin = 12_dp, kGap = 4_dp, kFieldHeight = 22_dp;
constexpr toolkit::Twips kDropHeight = 200_dp, kPreviewHeight = 84_dp;

// What the window is higher than its toolbars and a page together: its caption and frame.
constexpr toolkit::Twips kExtraHeight{400};

int LineHeight() { return toolkit::MeasureText(toolkit::DialogFont(), "X").cy; }
int FieldHeight() { return std::max(Px(kFieldHeight), LineHeight() + Px(6_dp)); }
int WidthOf(HWND label) { return toolkit::MeasureText(toolkit::DialogFont(), toolkit::TextOf(label)).cx; }

void Place(HWND control, int left, int top, int width, int height) {
  ::MoveWindow(control, left, top, std::max(width, 0), std::max(height, 0), TRUE);
}

SIZE ClientOf(HWND window) {
  RECT client{};
  ::GetClientRect(window, &client);
  return {client.right, client.bottom};
}

// The size that shows all buttons in one line.
SIZE NaturalSize(HWND toolbar) {
  const LRESULT count = ::SendMessageA(toolbar, TB_BUTTONCOUNT, 0, 0);
  RECT last{};
  ::SendMessageA(toolbar, TB_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&last));
  return {last.right, last.bottom + Px(2_dp)};
}

SIZE NaturalSize(toolkit::Toolbar& toolbar) {
  toolbar.Place(Px(2000_dp));
  return NaturalSize(toolbar.hwnd());
}

}  // namespace

// In the middle of the work area.
void FrmOpt::PlaceWindow() {
  const SIZE pages = NaturalSize(tbOpt), commands = NaturalSize(TB);
  RECT frame{0, 0, std::max(Px(kPageWidth), static_cast<int>(std::max(pages.cx, commands.cx))), 0};
  ::AdjustWindowRectEx(&frame, kOptStyle, FALSE, kOptExStyle);
  const int width = frame.right - frame.left;
  const int height = pages.cy + Px(kPageHeight) + commands.cy + Px(kExtraHeight);
  const RECT area = toolkit::WorkAreaPixels();
  const int left = area.left + std::max((static_cast<int>(area.right - area.left) - width) / 2, 0);
  const int top = area.top + std::max((static_cast<int>(area.bottom - area.top) - height) / 2, 0);
  ::MoveWindow(hwnd(), left, top, width, height, FALSE);
}

// The pages keep their height whatever frame the system gives the window; the margin at their lower end makes up for a
// thick one, and the command bar lies above it.
void FrmOpt::LayOut() {
  const SIZE client = ClientOf(hwnd());
  const int selector = tbOpt.Place(client.cx);
  for (const auto& page : picOpt) Place(page->hwnd(), 0, selector, client.cx, Px(kPageHeight));
  const int commands = TB.Place(client.cx);
  ::SetWindowPos(TB.hwnd(), HWND_TOP, 0, client.cy - commands, client.cx, commands, SWP_NOACTIVATE);
  Place(lines_[0], 0, selector, client.cx, 2);
  Place(lines_[1], 0, client.cy - commands - Px(3_dp), client.cx, 2);
  for (const HWND line : lines_) ::SetWindowPos(line, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  LayOutUser();
  LayOutInterface();
  LayOutList(kSecurity, lblcap[kBlockLabel], txtBlock, tbSec, lvBlock.hwnd());
  LayOutList(kGroups, lblcap[kGroupsLabel], txtGroups, tbGroups, tvGroups.hwnd());
  lvBlock.FitColumn();
}

void FrmOpt::LayOutUser() {
  const SIZE page = ClientOf(picOpt[kUser]->hwnd());
  const int margin = Px(kMargin), line = LineHeight(), fieldTop = margin + line + Px(kGap);
  const int preview = (page.cx - 3 * margin) * 2 / 5, nameWidth = page.cx - 3 * margin - preview;
  const int previewLeft = margin + nameWidth + margin, frameHeight = Px(kPreviewHeight);
  Place(lblcap[kNameLabel], margin, margin, nameWidth, line);
  Place(txtName, margin, fieldTop, nameWidth, FieldHeight());
  Place(Frame1, previewLeft, margin, preview, frameHeight);
  const int inner = Px(10_dp), previewHeight = frameHeight - line - 2 * inner + Px(6_dp);
  Place(picPrevew->hwnd(), previewLeft + inner, margin + line + Px(4_dp), preview - 2 * inner, previewHeight);
  ::SetWindowPos(picPrevew->hwnd(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  Place(lblPrevew, Px(4_dp), (previewHeight - line) / 2, preview - 2 * inner - 2 * Px(4_dp), line);
  const int colourTop = margin + frameHeight + Px(6_dp), listTop = colourTop + line + Px(kGap);
  Place(lblcap[kColourLabel], margin, colourTop, page.cx - 2 * margin, line);
  Place(lvCol, margin, listTop, page.cx - 2 * margin, Px(kPageHeight) - 2 * margin - listTop);
  const SIZE list = ClientOf(lvCol);
  ListView_SetIconSpacing(lvCol, list.cx / 8, (list.cy - Px(4_dp)) / 2);
  ListView_Arrange(lvCol, LVA_DEFAULT);
}

void FrmOpt::LayOutInterface() {
  const SIZE page = ClientOf(picOpt[kInterface]->hwnd());
  const int margin = Px(kMargin), gap = Px(kGap), line = LineHeight();
  const int column = (page.cx - 3 * margin) / 2, right = margin + column + margin;
  int top = margin;
  const auto next = [&top](int height, int space) { return std::exchange(top, top + height + space); };
  Place(lblcap[kPositionLabel], margin, next(line, gap), column, line);
  const SIZE positions = NaturalSize(tbPos);
  Place(tbPos, margin, next(positions.cy, Px(8_dp)), column, positions.cy);
  const int height = WidthOf(lblcap[kHeightLabel]);
  Place(lblcap[kHeightLabel], margin, top, height, line);
  Place(lblHeight, margin + height + Px(6_dp), next(line, Px(14_dp)), column - height - Px(6_dp), line);
  Place(lblcap[kLanguageLabel], margin, next(line, gap), column, line);
  Place(CMBlang, margin, next(FieldHeight(), Px(14_dp)), column, Px(kDropHeight));
  Place(chkStartUp, margin, next(FieldHeight(), 0), column, FieldHeight());

  const SIZE test = NaturalSize(tbSnd);
  const int listTop = margin + line + gap, testTop = Px(kPageHeight) - 2 * margin - test.cy;
  Place(lblcap[kSoundLabel], right, margin, column, line);
  Place(lvSnd.hwnd(), right, listTop, column, testTop - gap - listTop);
  Place(tbSnd.hwnd(), right, testTop, test.cx, test.cy);
  lvSnd.FitColumn();
}

// A label above its box, the toolbar beside both, the list below.
void FrmOpt::LayOutList(std::size_t index, HWND label, HWND box, toolkit::Toolbar& toolbar, HWND list) {
  const SIZE page = ClientOf(picOpt[index]->hwnd()), tools = NaturalSize(toolbar);
  const int margin = Px(kMargin), gap = Px(kGap), line = LineHeight(), field = FieldHeight();
  const int rowHeight = std::max(static_cast<int>(tools.cy), line + gap + field);
  const int left = page.cx - margin - tools.cx, boxTop = margin + rowHeight - field;
  Place(label, margin, boxTop - gap - line, left - 2 * margin, line);
  Place(box, margin, boxTop, left - 2 * margin, field);
  Place(toolbar.hwnd(), left, margin + rowHeight - tools.cy, tools.cx, tools.cy);
  const int listTop = margin + rowHeight + Px(8_dp);
  Place(list, margin, listTop, page.cx - 2 * margin, Px(kPageHeight) - 2 * margin - listTop);
}

}  // namespace options
