#include "ui/main/frm_splash.h"

#include <algorithm>

#include "core/code_page.h"
#include "core/globals.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/screen.h"

namespace mainwindow {
namespace {

using toolkit::AreaAt;
using toolkit::Px;
using toolkit::Twips;
using toolkit::operator""_dp;

constexpr UINT_PTR kTimer1 = 1;

constexpr char kDoing[] = "Synchronising Network Status";
constexpr COLORREF kDotBackground = RGB(224, 224, 224), kVersionColour = RGB(128, 128, 128);
constexpr Twips kWidth{3450}, kHeight{1050}, kDotSide{255}, kMargin{150};

// The colour of the dot, which pulses between red and green.
struct DotColour {
  int red, green;  // 0 to 255; blue is always 0
};

// The counter of the next tick: 0, 5, ... 200, then 0 again.
constexpr int NextPulse(int counter) { return counter + 5 > 200 ? 0 : counter + 5; }

// 2.56 per step of a triangle wave 0 to 100 and back, rounded; a full 256 counts as 255.
constexpr DotColour PulseColour(int counter) {
  const int wave = counter > 100 ? 200 - counter : counter;
  const auto channel = [](int step) { return std::min((256 * step + 50) / 100, 255); };
  return {channel(100 - wave), channel(wave)};
}

toolkit::Font VersionFont() {
  LOGFONTA font{};
  font.lfHeight = -Px(11_dp);
  lstrcpynA(font.lfFaceName, "Arial", LF_FACESIZE);
  return toolkit::Font(::CreateFontIndirectA(&font));
}

int TextLeft() { return Px(kMargin) + toolkit::PictureSize(res::Strip::Splash) + Px(kMargin); }

// The designed width, or more if the font needs it.
int WindowWidth() {
  const int text = toolkit::MeasureText(toolkit::DialogFont(), kDoing).cx;
  return std::max(Px(kWidth), TextLeft() + static_cast<int>(text) + Px(kMargin) + 2 * ::GetSystemMetrics(SM_CXBORDER));
}

}  // namespace

void SplashLabel::Load(HWND parent, const char* text, const toolkit::Area& place, HFONT font, COLORREF colour) {
  font_ = font;
  colour_ = colour;
  Create({"SplashLabel", WS_CHILD | WS_VISIBLE, 0, COLOR_WINDOW}, text, place, parent);
}

LRESULT SplashLabel::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_PAINT) return Window::Handle(message, wParam, lParam);
  Paint();
  return 0;
}

void SplashLabel::Paint() const {
  PAINTSTRUCT paint{};
  const HDC dc = ::BeginPaint(hwnd(), &paint);
  {
    const toolkit::ScopedSelection font(dc, font_);
    ::SetTextColor(dc, colour_);
    ::SetBkMode(dc, TRANSPARENT);
    const std::wstring text = core::Wide(Text());
    ::TextOutW(dc, 0, 0, text.data(), static_cast<int>(text.size()));
  }
  ::EndPaint(hwnd(), &paint);
}

void FrmSplash::Load() {
  const int width = WindowWidth(), height = Px(kHeight);
  Create({"frmSplash", WS_POPUP | WS_BORDER | WS_CLIPCHILDREN, WS_EX_TOOLWINDOW, COLOR_WINDOW}, "Quillon",
         {0, 0, width, height});
  const toolkit::WorkArea area = toolkit::GetWorkArea(hwnd());
  ::SetWindowPos(hwnd(), nullptr, Px(area.right) - width, Px(area.bottom) - height, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  pictureIcon_ =
      toolkit::LoadPicture(res::Strip::Splash, res::kSplashPicture, toolkit::PictureSize(res::Strip::Splash));
  versionFont_ = VersionFont();
  CreateControls();
  Timer1.Start(hwnd(), kTimer1);
}

void FrmSplash::ShowOnTop() {
  Show(SW_SHOWNOACTIVATE);
  toolkit::SetTopMost(hwnd(), true);
}

void FrmSplash::CreateControls() {
  const toolkit::Area client = toolkit::ClientAreaOf(hwnd());
  const int picture = toolkit::PictureSize(res::Strip::Splash), margin = Px(kMargin), dot = Px(kDotSide);
  const int left = TextLeft(), top = (client.bottom - Px(44_dp)) / 2;
  const int line = std::max(Px(16_dp), static_cast<int>(toolkit::MeasureText(toolkit::DialogFont(), kDoing).cy));
  Picture1 = toolkit::RectOf(AreaAt(margin, (client.bottom - picture) / 2, picture, picture));
  picDot = toolkit::RectOf(AreaAt(left, top + Px(26_dp), dot, dot));
  // Into the margin: the last character may overhang what was measured.
  label_->Load(hwnd(), kDoing, AreaAt(left, top, client.right - left, line), toolkit::DialogFont(),
               ::GetSysColor(COLOR_WINDOWTEXT));
  const int version = left + dot + margin / 2;
  lblVer->Load(hwnd(), core::gVersion.c_str(), AreaAt(version, top + Px(28_dp), client.right - margin - version, line),
               versionFont_.get(), kVersionColour);
}

LRESULT FrmSplash::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_TIMER:
      Timer1Timer();
      return 0;
    case WM_SHOWWINDOW:
      return ::DefWindowProcA(hwnd(), message, wParam,
                              lParam);  // not LoadPictures, which would delay the start
    case WM_PAINT:
      Paint();
      return 0;
    case WM_CLOSE:
      return 0;  // closed with the process
    default:
      return Window::Handle(message, wParam, lParam);
  }
}

void FrmSplash::Timer1Timer() {
  // Keeps pulsing until the process ends, but slowly once hidden.
  if (::IsWindowVisible(hwnd())) Timer1.Wake();
  Timer1.Ticked();
  pulse_ = NextPulse(pulse_);
  ::InvalidateRect(hwnd(), &picDot, FALSE);
}

void FrmSplash::Paint() const {
  PAINTSTRUCT paint{};
  const HDC dc = ::BeginPaint(hwnd(), &paint);
  if (::RectVisible(dc, &Picture1)) {
    const int side = toolkit::PictureSize(res::Strip::Splash);
    ::DrawIconEx(dc, Picture1.left, Picture1.top, pictureIcon_.get(), side, side, 0, nullptr, DI_NORMAL);
  }
  DrawDot(dc);
  ::EndPaint(hwnd(), &paint);
}

void FrmSplash::DrawDot(HDC dc) const {
  const toolkit::Brush background(::CreateSolidBrush(kDotBackground));
  ::FillRect(dc, &picDot, background.get());
  const DotColour colour = PulseColour(pulse_);
  const COLORREF rgb = RGB(colour.red, colour.green, 0);
  const toolkit::Brush fill(::CreateSolidBrush(rgb));
  const toolkit::UniqueHandle<HPEN, toolkit::ObjectDeleter> outline(::CreatePen(PS_SOLID, 1, rgb));
  const toolkit::ScopedSelection brush(dc, fill.get()), pen(dc, outline.get());
  const int half = (picDot.right - picDot.left) / 2, radius = half - 3;
  const int x = picDot.left + half, y = picDot.top + half;
  ::Ellipse(dc, x - radius, y - radius, x + radius + 1, y + radius + 1);
}

}  // namespace mainwindow
