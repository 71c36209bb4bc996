#include "ui/toolkit/screen.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "core/code_page.h"
#include "ui/toolkit/handles.h"

namespace toolkit {
namespace {

LOGFONTA MessageFont() {
  NONCLIENTMETRICSA metrics{};
  metrics.cbSize = sizeof metrics;
  if (::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return metrics.lfMessageFont;
  LOGFONTA fallback{};
  fallback.lfHeight = -Px(11_dp);
  std::strcpy(fallback.lfFaceName, "MS Shell Dlg");
  return fallback;
}

Area Of(const RECT& rect) {
  return {static_cast<int>(rect.left), static_cast<int>(rect.top), static_cast<int>(rect.right),
          static_cast<int>(rect.bottom)};
}

// The work area may still be that of the former screen size when a window is told of the new one.
Area UsableAreaOf(HMONITOR monitor) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  ::GetMonitorInfoA(monitor, &info);
  RECT usable{};
  return Of(::IntersectRect(&usable, &info.rcWork, &info.rcMonitor) ? usable : info.rcMonitor);
}

// Created on first use. A failure is retried on the next use; null means the system's font until then.
HFONT Kept(Font& kept, LONG weight) {
  if (kept) return kept.get();
  LOGFONTA font = MessageFont();
  if (weight) font.lfWeight = weight;
  kept = Font(::CreateFontIndirectA(&font));
  return kept.get();
}

// That of the design if no device context is available.
Dpi DpiOf(HWND hwnd, int index) {
  const int dpi = ::GetDeviceCaps(WindowDc(hwnd).get(), index);
  return {dpi > 0 ? dpi : USER_DEFAULT_SCREEN_DPI};
}

}  // namespace

Dpi ScreenDpi() {
  static const Dpi dpi = DpiOf(nullptr, LOGPIXELSX);
  return dpi;
}

ScreenSize WholeScreen() { return {Tw(::GetSystemMetrics(SM_CXSCREEN)), Tw(::GetSystemMetrics(SM_CYSCREEN))}; }

Area WorkAreaPixels() {
  RECT area{0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
  ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
  return Of(area);
}

HFONT DialogFont() {
  static Font font;
  return Kept(font, 0);
}

HFONT BoldDialogFont() {
  static Font font;
  return Kept(font, FW_BOLD);
}

void SetBold(HWND control) { ::SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(BoldDialogFont()), FALSE); }

int SystemCharset() {
  CHARSETINFO info{};
  const auto codePage = reinterpret_cast<DWORD*>(static_cast<std::uintptr_t>(::GetACP()));
  return ::TranslateCharsetInfo(codePage, &info, TCI_SRCCODEPAGE) ? static_cast<int>(info.ciCharset) : ANSI_CHARSET;
}

int LineHeight() { return MeasureText(DialogFont(), "X").cy; }

SIZE MeasureText(HFONT font, std::string_view text) {
  const WindowDc dc(nullptr);
  const ScopedSelection selected(dc.get(), font);
  return MeasureText(dc.get(), text);
}

SIZE MeasureText(HDC dc, std::string_view text) {
  const std::wstring wide = core::Wide(text);
  SIZE size{};
  ::GetTextExtentPoint32W(dc, wide.data(), static_cast<int>(wide.size()), &size);
  return size;
}

WorkArea GetWorkArea(HWND window) {
  const Area area = WorkAreaPixels();
  const Dpi across = DpiOf(window, LOGPIXELSX), down = DpiOf(window, LOGPIXELSY);
  return {ToTwips(area.left, across), ToTwips(area.top, down), ToTwips(area.right, across), ToTwips(area.bottom, down)};
}

Area AreaOf(HWND window) {
  RECT rect{};
  ::GetWindowRect(window, &rect);
  return Of(rect);
}

Area ClientAreaOf(HWND window) {
  RECT rect{};
  ::GetClientRect(window, &rect);
  return Of(rect);
}

core::WindowBounds BoundsOf(HWND window) {
  const Area area = AreaOf(window);
  return {Tw(area.left).value, Tw(area.top).value, Tw(area.Width()).value, Tw(area.Height()).value};
}

Area AreaOf(const core::WindowBounds& bounds) {
  return Px(Twips{bounds.left}, Twips{bounds.top}, Twips{bounds.width}, Twips{bounds.height});
}

RECT RectOf(const Area& area) { return {area.left, area.top, area.right, area.bottom}; }

Area Reachable(const Area& place) {
  const RECT rect = RectOf(place);
  if (::MonitorFromRect(&rect, MONITOR_DEFAULTTONULL)) return place;
  const Area work = UsableAreaOf(::MonitorFromRect(&rect, MONITOR_DEFAULTTONEAREST));
  const int left = std::max(std::min(place.left, work.right - place.Width()), work.left);
  const int top = std::max(std::min(place.top, work.bottom - place.Height()), work.top);
  return AreaAt(left, top, place.Width(), place.Height());
}

void SetArea(HWND window, const Area& area) {
  ::SetWindowPos(window, nullptr, area.left, area.top, std::max(area.Width(), 0), std::max(area.Height(), 0),
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

}  // namespace toolkit
