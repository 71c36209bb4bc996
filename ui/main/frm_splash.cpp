#include "ui/main/frm_splash.h"

#include <algorithm>

#include "core/globals.h"
#include "core/splash_pulse.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/screen.h"
#include "ui/toolkit/window_helpers.h"

namespace mainwindow {
namespace {

using toolkit::Px;
using toolkit::Twips;

constexpr UINT_PTR kTimer1 = 1;

constexpr int kPictureId = 1, kDotId = 2;
constexpr char kDoing[] = "Synchronising Network Status";
constexpr COLORREF kDotBackground = RGB(224, 224, 224), kVersionColour = RGB(128, 128, 128);
constexpr Twips kWidth{3450}, kHeight{1050}, kDotSide{255}, kMargin{150};

toolkit::Font VersionFont() {
  LOGFONTA font{};
  font.lfHeight = -Px(11);
  lstrcpynA(font.lfFaceName, "Arial", LF_FACESIZE);
  return toolkit::Font(::CreateFontIndirectA(&font));
}

int TextLeft() { return Px(kMargin) + toolkit::PictureSize(res::Strip::Splash) + Px(kMargin); }

// The designed width, or more where the user's font needs it.
int WindowWidth() {
  const int text = toolkit::MeasureText(toolkit::DialogFont(), kDoing).cx;
  return std::max(Px(kWidth), TextLeft() + static_cast<int>(text) + Px(kMargin) + 2 * ::GetSystemMetrics(SM_CXBORDER));
}

}  // namespace

void FrmSplash::Load() {
  const RECT area = toolkit::WorkAreaPixels();
  const int width = WindowWidth(), height = Px(kHeight);
  const toolkit::WindowStyle style{"frmSplash", WS_POPUP | WS_BORDER | WS_CLIPCHILDREN, WS_EX_TOOLWINDOW, COLOR_WINDOW};
  Create(style, "Quillon", {area.right - width, area.bottom - height, area.right, area.bottom});
  picture1_ = AddControl("STATIC", "", SS_OWNERDRAW, 0, kPictureId);
  label_ = AddControl("STATIC", kDoing, SS_LEFTNOWORDWRAP | SS_NOPREFIX);
  picDot_ = AddControl("STATIC", "", SS_OWNERDRAW, 0, kDotId);
  lblVer_ = AddControl("STATIC", core::gVersion.c_str(), SS_LEFTNOWORDWRAP | SS_NOPREFIX);
  pictureIcon_ =
      toolkit::LoadPicture(res::Strip::Splash, res::kSplashPicture, toolkit::PictureSize(res::Strip::Splash));
  versionFont_ = VersionFont();
  ::SendMessageA(lblVer_, WM_SETFONT, reinterpret_cast<WPARAM>(versionFont_.get()), FALSE);
  PlaceControls();
  Timer1.Start(hwnd(), kTimer1);
}

void FrmSplash::PlaceControls() {
  RECT client{};
  ::GetClientRect(hwnd(), &client);
  const int picture = toolkit::PictureSize(res::Strip::Splash), margin = Px(kMargin), dot = Px(kDotSide);
  const int textLeft = TextLeft(), line = Px(16), top = (client.bottom - Px(44)) / 2;
  ::MoveWindow(picture1_, margin, (client.bottom - picture) / 2, picture, picture, FALSE);
  // Into the margin: the last letter may overhang what was measured.
  ::MoveWindow(label_, textLeft, top, client.right - textLeft, line, FALSE);
  ::MoveWindow(picDot_, textLeft, top + Px(26), dot, dot, FALSE);
  ::MoveWindow(lblVer_, textLeft + dot + margin / 2, top + Px(28), client.right - textLeft - dot - margin, line, FALSE);
}

LRESULT FrmSplash::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_TIMER:
      Timer1Timer();
      return 0;
    case WM_SHOWWINDOW:
      return ::DefWindowProcA(hwnd(), message, wParam,
                              lParam);  // needs none of the others' pictures, and is in a hurry
    case WM_DRAWITEM:
      Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
      return TRUE;
    case WM_CTLCOLORSTATIC: {
      const auto dc = reinterpret_cast<HDC>(wParam);
      const bool version = reinterpret_cast<HWND>(lParam) == lblVer_;
      ::SetTextColor(dc, version ? kVersionColour : ::GetSysColor(COLOR_WINDOWTEXT));
      ::SetBkColor(dc, ::GetSysColor(COLOR_WINDOW));
      return reinterpret_cast<LRESULT>(::GetSysColorBrush(COLOR_WINDOW));
    }
    case WM_CLOSE:
      return 0;  // it goes with the process
    default:
      return Window::Handle(message, wParam, lParam);
  }
}

void FrmSplash::Timer1Timer() {
  // It pulses until the process ends, but slowly once nobody sees it.
  if (::IsWindowVisible(hwnd())) Timer1.Wake();
  Timer1.Ticked();
  pulse_ = core::NextPulse(pulse_);
  ::InvalidateRect(picDot_, nullptr, FALSE);
}

void FrmSplash::Draw(const DRAWITEMSTRUCT& request) const {
  if (request.CtlID == kDotId) return DrawDot(request.hDC, request.rcItem);
  ::FillRect(request.hDC, &request.rcItem, ::GetSysColorBrush(COLOR_WINDOW));
  const int side = toolkit::PictureSize(res::Strip::Splash);
  ::DrawIconEx(request.hDC, 0, 0, pictureIcon_.get(), side, side, 0, nullptr, DI_NORMAL);
}

void FrmSplash::DrawDot(HDC dc, const RECT& inner) const {
  const toolkit::Brush background(::CreateSolidBrush(kDotBackground));
  ::FillRect(dc, &inner, background.get());
  const core::DotColour colour = core::PulseColour(pulse_);
  const COLORREF rgb = RGB(colour.red, colour.green, 0);
  const toolkit::Brush fill(::CreateSolidBrush(rgb));
  const toolkit::Owned<HPEN, toolkit::ObjectFreer> outline(::CreatePen(PS_SOLID, 1, rgb));
  const toolkit::Selected brush(dc, fill.get()), pen(dc, outline.get());
  const int radius = inner.right / 2 - 3;
  const int x = inner.right / 2, y = inner.bottom / 2;
  ::Ellipse(dc, x - radius, y - radius, x + radius + 1, y + radius + 1);
}

}  // namespace mainwindow
