#include "core/message_box.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "core/callback_guard.h"
#include "core/code_page.h"

namespace core {
namespace {

BoxQueue gPostedBoxes;

// Delay before another attempt when no window could be created, milliseconds.
constexpr UINT kRetryTime = 1000;
UINT_PTR gRetryTimer = 0;  // runs until the next attempt

UINT IconStyle(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::None:
      return 0;
    case BoxIcon::Information:
      return MB_ICONINFORMATION;
    case BoxIcon::Exclamation:
      return MB_ICONEXCLAMATION;
    case BoxIcon::Critical:
      return MB_ICONERROR;
  }
  return 0;
}

SIZE SizeOf(const RECT& rect) { return {rect.right - rect.left, rect.bottom - rect.top}; }

SIZE SizeOf(HWND hwnd) {
  RECT rect{};
  ::GetWindowRect(hwnd, &rect);
  return SizeOf(rect);
}

// Calls `onBox` with the next message box of this thread once it is laid out, before it is shown. The hook removes
// itself then: it slows down every sent message, and a box may stay open for hours.
class BoxHook {
 public:
  using OnBox = void (*)(HWND box);

  explicit BoxHook(OnBox onBox)
      : onBox_(onBox),
        outer_(std::exchange(innermost_, this)),
        hook_(::SetWindowsHookExA(WH_CALLWNDPROCRET, Procedure, nullptr, ::GetCurrentThreadId())) {}
  BoxHook(const BoxHook&) = delete;
  BoxHook& operator=(const BoxHook&) = delete;
  ~BoxHook() {
    Unhook();
    innermost_ = outer_;
  }

  // False when the system has no room for a hook.
  bool Installed() const { return hook_ != nullptr; }

 private:
  static LRESULT CALLBACK Procedure(int code, WPARAM wParam, LPARAM lParam) {
    const auto& sent = *reinterpret_cast<const CWPRETSTRUCT*>(lParam);
    if (code == HC_ACTION && sent.message == WM_INITDIALOG && innermost_->Unhook()) innermost_->onBox_(sent.hwnd);
    return ::CallNextHookEx(nullptr, code, wParam, lParam);
  }

  bool Unhook() { return hook_ != nullptr && ::UnhookWindowsHookEx(std::exchange(hook_, nullptr)); }

  static inline BoxHook* innermost_ = nullptr;
  OnBox onBox_;
  BoxHook* outer_;
  HHOOK hook_;
};

class ScreenText {
 public:
  explicit ScreenText(const LOGFONTA& font) : dc_(::GetDC(nullptr)), font_(::CreateFontIndirectA(&font)) {
    former_ = ::SelectObject(dc_, font_);
  }
  ScreenText(const ScreenText&) = delete;
  ScreenText& operator=(const ScreenText&) = delete;
  ~ScreenText() {
    ::SelectObject(dc_, former_);
    ::DeleteObject(font_);
    ::ReleaseDC(nullptr, dc_);
  }

  SIZE OneLine(const std::string& text) const {
    const std::wstring wide = Wide(text);
    SIZE size{};
    ::GetTextExtentPoint32W(dc_, wide.data(), static_cast<int>(wide.size()), &size);
    return size;
  }

  // Wrapped as message boxes do it: at blanks, never inside a word.
  SIZE Wrapped(const std::string& text, LONG width) const {
    RECT rect{0, 0, width, 0};
    const std::wstring wide = Wide(text);
    ::DrawTextW(dc_, wide.data(), static_cast<int>(wide.size()), &rect,
                DT_LEFT | DT_EXPANDTABS | DT_WORDBREAK | DT_NOPREFIX | DT_CALCRECT);
    return SizeOf(rect);
  }

 private:
  HDC dc_;
  HFONT font_;
  HGDIOBJ former_ = nullptr;
};

NONCLIENTMETRICSA Metrics() {
  NONCLIENTMETRICSA metrics{};
  metrics.cbSize = sizeof metrics;
  ::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  return metrics;
}

SIZE WorkArea() {
  RECT area{0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
  ::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
  return SizeOf(area);
}

// The space for the text of a box.
struct Room {
  LOGFONTA font;
  LONG wrap;  // width at which lines are wrapped
  SIZE max;
};

bool FitsInto(const Room& room, const std::string& text) {
  const ScreenText screen(room.font);
  // A rough test by area first: wrapping tens of thousands of characters takes seconds. Line ends count as characters
  // there, hence the tolerance.
  const SIZE line = screen.OneLine(text + ' ');
  if (std::int64_t{line.cx} * line.cy > std::int64_t{2} * room.max.cx * room.max.cy) return false;
  const SIZE size = screen.Wrapped(text, room.wrap);
  return size.cx <= room.max.cx && size.cy <= room.max.cy;
}

// The width at which a message box wraps its text, and the margins around it, differ between systems. So a box too
// large for any screen is laid out, measured and closed before it is shown.
class BoxMeasure {
 public:
  static Room RoomFor(BoxIcon icon) {
    const NONCLIENTMETRICSA metrics = Metrics();
    area_ = WorkArea();
    room_ = SmallestRoom(metrics.lfMessageFont);
    const BoxHook hook(Measure);
    if (!hook.Installed()) return room_;  // the box would stay open
    ::MessageBoxA(nullptr, OversizedText(room_.font).c_str(), "", MB_OK | IconStyle(icon));
    return room_;
  }

  // What the message box of any system can hold: enough for most texts, without measuring.
  static Room SmallestRoom(const LOGFONTA& font) {
    const SIZE area = WorkArea();
    return {font, 16 * std::abs(font.lfHeight), {area.cx / 2, area.cy / 2}};
  }

 private:
  // More and wider lines than the screen can hold, made of the narrowest words.
  static std::string OversizedText(const LOGFONTA& font) {
    const ScreenText screen(font);
    const SIZE word = screen.OneLine("i ");
    std::string line;
    for (LONG width = 0; width <= area_.cx; width += std::max<LONG>(word.cx, 1)) line += "i ";
    std::string lines;
    for (LONG height = 0; height <= area_.cy; height += std::max<LONG>(word.cy, 1)) lines += line + "\r\n";
    return lines;
  }

  static void Measure(HWND box) {
    HWND text = nullptr;
    while ((text = ::FindWindowExA(box, text, "Static", nullptr)) != nullptr)
      if (::GetWindowTextLengthA(text) > 0) Take(SizeOf(box), text);
    ::EndDialog(box, 0);
  }

  static void Take(SIZE box, HWND text) {
    const SIZE size = SizeOf(text);
    room_.wrap = std::max<LONG>(size.cx, 1);
    room_.max = {area_.cx - (box.cx - size.cx), area_.cy - (box.cy - size.cy)};
    const auto font = reinterpret_cast<HFONT>(::SendMessageA(text, WM_GETFONT, 0, 0));
    ::GetObjectA(font, sizeof room_.font, &room_.font);
  }

  static inline SIZE area_{};
  static inline Room room_{};
};

bool TextFits(const std::string& text, BoxIcon icon, std::optional<Room>& room) {
  if (!room) {
    if (FitsInto(BoxMeasure::SmallestRoom(Metrics().lfMessageFont), text)) return true;
    room = BoxMeasure::RoomFor(icon);
  }
  return FitsInto(*room, text);
}

// Leaves space for the frame, the icon and the buttons of a title bar.
bool TitleFits(const std::string& title) {
  return ScreenText(Metrics().lfCaptionFont).OneLine(title).cx <= WorkArea().cx - 4 * ::GetSystemMetrics(SM_CXSIZE);
}

// Wine ignores the style, and a box behind a window that it has disabled could not be reached.
void PutOnTop(HWND box) { ::SetWindowPos(box, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE); }

// 0 when no window can be created.
int Show(const Box& box, UINT buttons) {
  std::optional<Room> room;
  const Box shown = CutToFit(
      box, [&](const std::string& text) { return TextFits(text, box.icon, room); }, TitleFits);
  const BoxHook hook(PutOnTop);
  return std::max(0, ::MessageBoxA(nullptr, shown.text.c_str(), shown.title.c_str(),
                                   MB_TASKMODAL | MB_TOPMOST | IconStyle(shown.icon) | buttons));
}

void CALLBACK EndWait(HWND, UINT, UINT_PTR timer, DWORD) {
  ::KillTimer(nullptr, timer);
  gRetryTimer = 0;
}

}  // namespace

void ShowBox(const Box& box) {
  if (Show(box, MB_OK) == 0) PostBox(box);
}

bool AskBox(const Box& box) { return Show(box, MB_YESNO) == IDYES; }

void PostBox(Box box) {
  gPostedBoxes.Post(std::move(box));
  // Wakes the loop: a message sent by another thread may post a box from inside the loop's wait.
  ::PostThreadMessageA(::GetCurrentThreadId(), WM_NULL, 0, 0);
}

// Runs between messages, outside of any guarded callback.
void ShowPostedBoxes() {
  if (gRetryTimer != 0) return;
  Guarded([] {
    const bool shown = gPostedBoxes.ShowAll([](const Box& box) { return Show(box, MB_OK) != 0; });
    if (!shown) gRetryTimer = ::SetTimer(nullptr, 0, kRetryTime, EndWait);
  });
}

}  // namespace core
