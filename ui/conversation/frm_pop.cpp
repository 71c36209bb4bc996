#include "ui/conversation/frm_pop.h"

#include <utility>

#include "core/files.h"
#include "core/globals.h"
#include "core/sound.h"
#include "core/text.h"
#include "ui/conversation/clipboard.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/roster_rows.h"
#include "ui/toolkit/save/frm_save.h"
#include "ui/toolkit/screen.h"

namespace conversation {
namespace {

using namespace popupmenu;

using toolkit::Px;
using toolkit::Tw;

constexpr UINT_PTR kAniTimer = 1, kTimer = 2;
enum ControlId : unsigned { kCloseId = 101, kDropId, kPictureId };
constexpr char kCloseGlyph = 'r', kDropGlyph = '6';

constexpr toolkit::Caption kExportTitle{5201, "Export Alert"};

// The colours of the flashing; the second one is white on most desktops.
constexpr int kFaceColour = COLOR_BTNFACE, kLitColour = COLOR_HIGHLIGHTTEXT;

// Alerts to everybody and private ones have the same picture, other kinds none.
constexpr bool HasPicture(int iconKind) { return iconKind == 0 || iconKind == 1; }

Size PictureSize() {
  const Twips side = Tw(toolkit::PictureSize(res::Strip::Menu));
  return {side, side};
}

void PlaceControl(HWND control, const Bounds& bounds) {
  toolkit::SetArea(control, Px(bounds.left, bounds.top, bounds.width, bounds.height));
}

}  // namespace

FrmPop::FrmPop(Alert alert, std::int32_t colour, PopupCommands commands)
    : alert_(std::move(alert)),
      colour_(colour),
      commands_(std::move(commands)),
      corner_(CornerOf(core::gPopPos)),
      alertHeight_(core::gAlertHeight) {}

void FrmPop::Open() {
  Create({"frmPop", WS_POPUP | WS_CLIPCHILDREN, WS_EX_TOOLWINDOW}, {5001, "Quillon"}, {});
  ::SetTimer(hwnd(), kTimer, kFlashInterval, nullptr);
  CreateControls();
  SetLan();
  Build();
  PlaceAndShow();
}

void FrmPop::CreateControls() {
  picImg = AddControl("STATIC", "", SS_OWNERDRAW, 0, kPictureId);
  lblSender = AddControl("STATIC", alert_.sender.c_str(), SS_CENTERIMAGE | SS_ENDELLIPSIS | SS_NOPREFIX);
  toolkit::SetBold(lblSender);
  lblMsg.Create(hwnd(), alert_.text + "\r\n");
  lblMsg.SetForeColour(colour_);
  lblDrop.Create(hwnd(), kDropId, kDropGlyph);
  AddName({5101, "-Options"}, [this](const std::string& name) { lblDrop.SetName(name); });
  lblClose.Create(hwnd(), kCloseId, kCloseGlyph);
  AddName({4005, "&Close"}, [this](const std::string& name) { lblClose.SetName(name); });
  FocusFirst(lblDrop.hwnd());
  AddMenu(mnuPop);
  mnuPop.DrawItems();
}

void FrmPop::Build() {
  const Size picture = PictureSize();
  const Size largest = LargestLabel(toolkit::WholeScreen(), picture.height, RestOf(corner_, alertHeight_));
  const SIZE text = lblMsg.Fit({Px(largest.width), Px(largest.height)});
  const Size label{LabelWidth(Tw(text.cx)), Tw(text.cy)};
  size_ = PopupSize(label, picture.height);
  const PopupParts parts = PartsOf(size_, label, picture);
  ::SetWindowPos(hwnd(), nullptr, 0, 0, Px(size_.width), Px(size_.height), SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  PlaceControl(picImg, parts.picture);
  PlaceControl(lblSender, parts.sender);
  PlaceControl(lblDrop.hwnd(), parts.drop);
  PlaceControl(lblClose.hwnd(), parts.close);
  PlaceControl(lblMsg.hwnd(), parts.label);
}

void FrmPop::PlaceAndShow() {
  MoveTo(StartPosition());
  Show(SW_SHOWNOACTIVATE);
  toolkit::SetTopMost(hwnd(), true);
  core::PlayAlertSound(core::gSound);
  ::SetTimer(hwnd(), kAniTimer, kSlideInterval, nullptr);
}

// Lays out again so that the buttons stay on the screen.
void FrmPop::FitToScreen() {
  Build();
  Point rest = StartPosition();
  while (const auto top = NextTopAfter(rest.top)) rest.top = *top;
  MoveTo(rest);
}

Point FrmPop::StartPosition() const {
  const ScreenSize screen = toolkit::WholeScreen();
  if (!corner_) return PositionWithoutCorner(screen, size_.width);
  return StartOf(*corner_, screen, size_.width, size_.height);
}

std::optional<Twips> FrmPop::NextTopAfter(Twips top) const {
  if (!corner_) return std::nullopt;
  return NextTop(*corner_, toolkit::WholeScreen(), top, size_.height, alertHeight_);
}

void FrmPop::MoveTo(Point position) {
  position_ = position;
  ::SetWindowPos(hwnd(), nullptr, Px(position.left), Px(position.top), 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

LRESULT FrmPop::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_TIMER:
      wParam == kAniTimer ? aniTimer_Timer() : Timer_Timer();
      return 0;
    case WM_DISPLAYCHANGE:
      FitToScreen();
      return 0;
    case WM_DRAWITEM:
      Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
      return TRUE;
    case WM_PAINT:
      PaintFrame();
      return 0;
    case WM_MOUSEWHEEL:
      return ::SendMessageA(lblMsg.hwnd(), message, wParam, lParam);
    default:
      return Window::Handle(message, wParam, lParam);
  }
}

// Enter presses the button with the focus.
bool FrmPop::Translate(MSG& message) {
  const bool button = message.hwnd == lblClose.hwnd() || message.hwnd == lblDrop.hwnd();
  if (button && message.message == WM_KEYDOWN && message.wParam == VK_RETURN) {
    ::SendMessageA(message.hwnd, BM_CLICK, 0, 0);
    return true;
  }
  return Window::Translate(message);
}

void FrmPop::aniTimer_Timer() {
  const auto top = NextTopAfter(position_.top);
  if (!top) {
    ::KillTimer(hwnd(), kAniTimer);
    return;
  }
  MoveTo({position_.left, *top});
}

// A tick that was posted before the timer stopped may still arrive; it is ignored.
void FrmPop::Timer_Timer() {
  if (flashes_ == 0) return;
  --flashes_;
  lit_ = !lit_;
  lblMsg.SetBackColour(lit_ ? kLitColour : kFaceColour);
  ::InvalidateRect(picImg, nullptr, FALSE);
  if (flashes_ == 0) ::KillTimer(hwnd(), kTimer);
}

void FrmPop::Draw(const DRAWITEMSTRUCT& request) const {
  switch (request.CtlID) {
    case kCloseId:
      return lblClose.Draw(request);
    case kDropId:
      return lblDrop.Draw(request);
    default:
      return DrawPicture(request);
  }
}

void FrmPop::DrawPicture(const DRAWITEMSTRUCT& request) const {
  ::FillRect(request.hDC, &request.rcItem, ::GetSysColorBrush(lit_ ? kLitColour : kFaceColour));
  if (HasPicture(alert_.iconKind))
    ::ImageList_Draw(toolkit::SharedPictures(res::Strip::Menu), res::kMenuAlert, request.hDC, 0, 0, ILD_NORMAL);
}

// Without a border it could not be distinguished from the windows below it.
void FrmPop::PaintFrame() {
  PAINTSTRUCT paint{};
  const HDC dc = ::BeginPaint(hwnd(), &paint);
  const RECT client = toolkit::RectOf(toolkit::ClientAreaOf(hwnd()));
  ::FrameRect(dc, &client, ::GetSysColorBrush(COLOR_3DSHADOW));
  ::EndPaint(hwnd(), &paint);
}

std::span<const toolkit::Command> FrmPop::Commands() const {
  static const toolkit::Command kCommands[] = {
      {kCloseId, &FrmPop::Close},
      {kDropId, &FrmPop::lblDrop_Click},
      {mnuExportT, &FrmPop::mnuExportT_Click},
      {mnuExportC, &FrmPop::mnuExportC_Click},
      {mnuReplySender, &FrmPop::mnuReplySender_Click},
      {mnuReplyAll, &FrmPop::mnuReplyAll_Click},
      {mnuLive, &FrmPop::mnuLive_Click},
      {mnuBlock, &FrmPop::mnuBlock_Click},
  };
  return kCommands;
}

// Below the button, or beside it at the screen's edge.
void FrmPop::lblDrop_Click() {
  TPMPARAMS around{sizeof around, toolkit::RectOf(toolkit::AreaOf(lblDrop.hwnd()))};
  constexpr UINT how = TPM_LEFTALIGN | TPM_TOPALIGN | TPM_VERTICAL | TPM_RETURNCMD;
  RunCommand(static_cast<unsigned>(
      ::TrackPopupMenuEx(mnuPop.handle(), how, around.rcExclude.left, around.rcExclude.bottom, hwnd(), &around)));
}

// The dialog offers rich text too, but an alert has none: nothing is written then.
void FrmPop::mnuExportT_Click() {
  const std::string text = toolkit::TextOf(lblMsg.hwnd());
  const std::string path = toolkit::AskSaveName(kExportTitle);
  if (core::LowerCase(path).ends_with("txt")) core::WriteFileSafely(path, text);
}

void FrmPop::mnuExportC_Click() { CopyText(hwnd(), toolkit::TextOf(lblMsg.hwnd())); }

void FrmPop::mnuBlock_Click() { commands_.blockSender(alert_.sender); }

// Hidden first: some window managers return the focus of a closing window to the previous one, and would take it from
// the new window. If no window was opened, the popup is shown again.
void FrmPop::CloseIfOpened(const std::function<bool()>& open) {
  Show(SW_HIDE);
  try {
    if (open()) return Close();
    core::Beep();
  } catch (...) {
    Show(SW_SHOWNOACTIVATE);
    throw;
  }
  Show(SW_SHOWNOACTIVATE);
}

void FrmPop::Answer(const std::string& recipients) {
  CloseIfOpened([&] { return commands_.openComposer(recipients); });
}

void FrmPop::mnuReplySender_Click() { Answer(alert_.sender + '|'); }

void FrmPop::mnuReplyAll_Click() { Answer(toolkit::EverybodyList()); }

void FrmPop::mnuLive_Click() {
  CloseIfOpened([this] { return commands_.startLiveChat(alert_); });
}

}  // namespace conversation
