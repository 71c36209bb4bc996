#include "ui/toolkit/tray_icon.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "core/callback_guard.h"
#include "core/event_loop_win32.h"
#include "core/scoped_flag.h"
#include "core/text.h"
#include "ui/toolkit/handles.h"

namespace toolkit {
namespace {

constexpr char kClassName[] = "TrayIcon";

// The first version of the record, which every shell supports: 88 bytes in the 32-bit program, with a tip of 64.
constexpr DWORD kRecordSize = NOTIFYICONDATAA_V1_SIZE;
static_assert(sizeof(void*) != 4 || kRecordSize == 88);
constexpr std::size_t kTipSize = 64;

constexpr UINT kIconId = 1;
constexpr UINT kWholeRecord = NIF_MESSAGE | NIF_ICON | NIF_TIP;

constexpr UINT_PTR kRetryTimer = 1;

// The callback message is WM_MOUSEMOVE, with the mouse message in place of x. A hidden window gets no real ones.
constexpr UINT kCallback = WM_MOUSEMOVE;

// The shell broadcasts it to top-level windows when it has created a new task bar.
UINT TaskbarCreated() {
  static const UINT message = ::RegisterWindowMessageA("TaskbarCreated");
  return message;
}

// The events raised by a mouse message, in order.
struct TrayRoute {
  MouseButton button;
  std::array<TrayEvent, 2> events;  // in the order in which they are raised
  std::size_t count;
};

// Row n is for message 0x201 + n: down, up and double click of the left, right and middle button.
constexpr std::array<TrayRoute, 9> kTrayRoutes{{
    {MouseButton::Left, {TrayEvent::MouseDown}, 1},
    {MouseButton::Left, {TrayEvent::MouseUp}, 1},
    {MouseButton::Left, {TrayEvent::MouseDblClk, TrayEvent::ShowParent}, 2},
    {MouseButton::Right, {TrayEvent::MouseDown}, 1},
    {MouseButton::Right, {TrayEvent::MouseUp, TrayEvent::ShowPopUpMenu}, 2},
    {MouseButton::Right, {TrayEvent::MouseDblClk}, 1},
    {MouseButton::Middle, {TrayEvent::MouseDown}, 1},
    {MouseButton::Middle, {TrayEvent::MouseUp}, 1},
    {MouseButton::Middle, {TrayEvent::MouseDblClk}, 1},
}};

constexpr std::uint32_t kFirstTrayMessage = 0x201;

// Null for a plain move or an unknown number.
constexpr const TrayRoute* RouteOf(std::uint32_t message) {
  const std::uint32_t row = message - kFirstTrayMessage;  // wraps for smaller numbers, out of the table's range
  return row < kTrayRoutes.size() ? &kTrayRoutes[row] : nullptr;
}

}  // namespace

TrayIcon::TrayIcon(ShellNotify shell) : shell_(shell) {
  record_.cbSize = kRecordSize;
  record_.uID = kIconId;
  record_.uCallbackMessage = kCallback;
}

TrayIcon::~TrayIcon() {
  Destroy();
  if (record_.hWnd) ::DestroyWindow(record_.hWnd);
}

// A top-level window, never shown: a message-only window gets no broadcasts.
HWND TrayIcon::MakeWindow(TrayIcon* self) {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = Procedure;
  windowClass.hInstance = Instance();
  windowClass.lpszClassName = kClassName;
  ::RegisterClassA(&windowClass);  // fails harmlessly for the second icon
  const HWND hwnd =
      ::CreateWindowExA(WS_EX_TOOLWINDOW, kClassName, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, Instance(), nullptr);
  ::SetWindowLongPtrA(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
  return hwnd;
}

bool TrayIcon::HasValidShell() {
  OSVERSIONINFOA version{};
  version.dwOSVersionInfoSize = sizeof version;
  static_assert(sizeof version == 148);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
  const BOOL known = ::GetVersionExA(&version);  // reports at most Windows 8, which suffices here
#pragma GCC diagnostic pop
  return known && version.dwMajorVersion > 3;
}

void TrayIcon::Create() {
  if (active_) Destroy();
  if (!HasValidShell()) return;
  if (!record_.hWnd) record_.hWnd = MakeWindow(this);
  if (!record_.hWnd) return OnRefused();
  active_ = true;
  isRefused_ = false;
  if (Add()) return;
  retriesLeft_ = kRetries;
  ::SetTimer(record_.hWnd, kRetryTimer, kRetryTime, nullptr);
}

// After a time-out the shell may have added the icon anyway: then it refuses to add it again, but accepts changes.
bool TrayIcon::Add() { return Send(NIM_ADD, kWholeRecord) || Send(NIM_MODIFY, kWholeRecord); }

void TrayIcon::TryAgain() {
  if (retriesLeft_ == 0) return;  // a tick that was posted before the timer stopped
  const bool added = Add();
  retriesLeft_ = added ? 0 : retriesLeft_ - 1;
  if (retriesLeft_ > 0) return;
  ::KillTimer(record_.hWnd, kRetryTimer);
  if (!added) OnRefused();
}

void TrayIcon::OnRefused() {
  isRefused_ = true;
  if (Refused) Refused();
}

void TrayIcon::Destroy() {
  if (active_) shell_(NIM_DELETE, &record_);
  if (record_.hWnd) ::KillTimer(record_.hWnd, kRetryTimer);
  retriesLeft_ = 0;
  active_ = isRefused_ = false;
}

void TrayIcon::SetIcon(HICON icon) {
  record_.hIcon = icon;
  if (active_) Send(NIM_MODIFY, NIF_ICON);
}

// The former picture is destroyed only after the shell has the new one.
void TrayIcon::SetPicture(toolkit::Icon picture) {
  SetIcon(picture.get());
  picture_ = std::move(picture);
}

std::string TrayIcon::ToolTipText() const {
  const char* end = std::find(record_.szTip, record_.szTip + kTipSize, '\0');
  return {record_.szTip, end};
}

void TrayIcon::SetToolTipText(std::string_view text) {
  std::fill_n(record_.szTip, kTipSize, '\0');
  std::ranges::copy(core::LeadingCharacters(text, kTipSize - 1), record_.szTip);
  if (active_) Send(NIM_MODIFY, NIF_TIP);
}

bool TrayIcon::Send(DWORD message, UINT flags) {
  record_.uFlags = flags;
  return shell_(message, &record_) != FALSE;
}

LRESULT CALLBACK TrayIcon::Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto self = reinterpret_cast<TrayIcon*>(::GetWindowLongPtrA(hwnd, GWLP_USERDATA));
  if (self && message == kCallback) {
    if (!core::DeferDuringDispatch(hwnd, message, wParam, lParam)) self->MouseMove(LOWORD(lParam));
    return 0;
  }
  if (self && message == WM_TIMER && self->active_) core::Guarded([self] { self->TryAgain(); });
  if (self && message == TaskbarCreated() && self->active_) self->Create();
  return ::DefWindowProcA(hwnd, message, wParam, lParam);
}

void TrayIcon::MouseMove(UINT mouseMessage) {
  if (!active_ || dispatching_) return;
  const core::ScopedFlag dispatching(dispatching_);
  const TrayRoute* route = RouteOf(mouseMessage);
  for (std::size_t i = 0; route && i < route->count; ++i) Raise(route->events[i], route->button);
}

// If one handler of a message fails, the next one still runs.
void TrayIcon::Raise(TrayEvent event, MouseButton button) {
  const auto call = [](const auto& handler, auto... arguments) {
    if (handler) handler(arguments...);
  };
  core::GuardedSilently([&] {
    switch (event) {
      case TrayEvent::MouseDown:
        return call(MouseDown, button);
      case TrayEvent::MouseUp:
        return call(MouseUp, button);
      case TrayEvent::MouseDblClk:
        return call(MouseDblClk, button);
      case TrayEvent::ShowParent:
        return call(ShowParent);
      case TrayEvent::ShowPopUpMenu:
        return call(ShowPopUpMenu);
    }
  });
}

}  // namespace toolkit
