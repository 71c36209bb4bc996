// Changes the desktop of the Windows installation that it runs in, as a user does, for the soak test.
//
// usage: desktop size WIDTH HEIGHT     the screen's size in pixels
//        desktop colours RRGGBB        of windows and dialogs
//        desktop font HEIGHT           of captions, menus and message boxes, in pixels
//        desktop scaling DPI           of programs that start afterwards
//        desktop move CLASS LEFT TOP   a window of this class
// The exit status is 0 when Windows has accepted the change.
#include <windows.h>

#include <cstdlib>
#include <string_view>

namespace {

bool SetScreenSize(DWORD width, DWORD height) {
  DEVMODEA mode{};
  mode.dmSize = sizeof mode;
  mode.dmFields = DM_PELSWIDTH | DM_PELSHEIGHT;
  mode.dmPelsWidth = width;
  mode.dmPelsHeight = height;
  return ::ChangeDisplaySettingsA(&mode, CDS_UPDATEREGISTRY) == DISP_CHANGE_SUCCESSFUL &&
         ::GetSystemMetrics(SM_CXSCREEN) == static_cast<int>(width) &&
         ::GetSystemMetrics(SM_CYSCREEN) == static_cast<int>(height);
}

bool SetColours(unsigned long rgb) {
  const int places[] = {COLOR_BTNFACE, COLOR_WINDOW, COLOR_MENU};
  const COLORREF colour = RGB(rgb >> 16 & 0xFF, rgb >> 8 & 0xFF, rgb & 0xFF), colours[] = {colour, colour, colour};
  return ::SetSysColors(static_cast<int>(std::size(places)), places, colours) != 0;
}

bool SetFont(LONG height) {
  NONCLIENTMETRICSA metrics{};
  metrics.cbSize = sizeof metrics;
  if (!::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0)) return false;
  for (LOGFONTA* font : {&metrics.lfCaptionFont, &metrics.lfMenuFont, &metrics.lfMessageFont}) font->lfHeight = -height;
  return ::SystemParametersInfoA(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, SPIF_SENDCHANGE) != 0;
}

// Programs that keep the scaling of their start are told only that the metrics have changed.
bool SetScaling(DWORD dpi) {
  if (::RegSetKeyValueA(HKEY_CURRENT_USER, "Control Panel\\Desktop", "LogPixels", REG_DWORD, &dpi, sizeof dpi) != 0)
    return false;
  const auto metrics = reinterpret_cast<LPARAM>("WindowMetrics");
  return ::SendMessageTimeoutA(HWND_BROADCAST, WM_SETTINGCHANGE, SPI_SETNONCLIENTMETRICS, metrics, SMTO_ABORTIFHUNG,
                               5000, nullptr) != 0;
}

bool Move(const char* className, int left, int top) {
  return ::SetWindowPos(::FindWindowA(className, nullptr), nullptr, left, top, 0, 0,
                        SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE) != 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view change = argc > 2 ? argv[1] : "";
  bool done = false;
  if (change == "size" && argc > 3)
    done = SetScreenSize(std::strtoul(argv[2], nullptr, 10), std::strtoul(argv[3], nullptr, 10));
  if (change == "colours") done = SetColours(std::strtoul(argv[2], nullptr, 16));
  if (change == "move" && argc > 4) done = Move(argv[2], std::atoi(argv[3]), std::atoi(argv[4]));
  if (change == "font") done = SetFont(std::strtol(argv[2], nullptr, 10));
  if (change == "scaling") done = SetScaling(std::strtoul(argv[2], nullptr, 10));
  return done ? 0 : 1;
}
