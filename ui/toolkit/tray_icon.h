// An icon with a tool-tip in the notification area, with its mouse events. It is removed with this object.
#pragma once

#include <windows.h>
#include <shellapi.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "ui/toolkit/handles.h"

namespace toolkit {

enum class TrayEvent : std::uint8_t { MouseDown, MouseUp, MouseDblClk, ShowParent, ShowPopUpMenu };
enum class MouseButton : std::uint8_t { Left = 1, Right = 2, Middle = 4 };

class TrayIcon {
 public:
  using ShellNotify = BOOL(WINAPI*)(DWORD message, NOTIFYICONDATAA* record);

  explicit TrayIcon(ShellNotify shell = ::Shell_NotifyIconA);
  TrayIcon(const TrayIcon&) = delete;
  TrayIcon& operator=(const TrayIcon&) = delete;
  ~TrayIcon();

  // Mouse events of the icon. Messages that arrive while a handler runs are dropped; exceptions of handlers are
  // ignored.
  std::function<void(MouseButton)> MouseDown, MouseUp, MouseDblClk;
  std::function<void()> ShowParent;     // after a left double click
  std::function<void()> ShowPopUpMenu;  // after the right button is released

  static constexpr UINT kRetryTime = 2000;  // milliseconds
  static constexpr int kRetries = 30;

  // True when this version of Windows has a notification area.
  static bool HasValidShell();

  // Raised when the shell has refused the icon for a minute. It still appears when the shell creates a task bar later.
  std::function<void()> Refused;

  // Adds the icon, replacing an existing one; does nothing without a notification area. Retries every kRetryTime while
  // the shell is busy, as at logon.
  void Create();
  void Destroy();
  bool Active() const { return active_; }

  // True after the shell has refused the icon for a minute, until it creates a new task bar.
  bool IsRefused() const { return isRefused_; }

  // The picture: a borrowed handle, or one that this object owns from then on. Takes effect at once while active,
  // otherwise with the next Create.
  HICON Icon() const { return record_.hIcon; }
  void SetIcon(HICON icon);
  HICON Picture() const { return picture_.get(); }
  void SetPicture(toolkit::Icon picture);

  // Truncated to the size of the record, 63 bytes.
  std::string ToolTipText() const;
  void SetToolTipText(std::string_view text);

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  static HWND MakeWindow(TrayIcon* self);
  void MouseMove(UINT mouseMessage);
  void Raise(TrayEvent event, MouseButton button);
  bool Add();
  void TryAgain();
  void OnRefused();
  bool Send(DWORD message, UINT flags);

  ShellNotify shell_;
  NOTIFYICONDATAA record_{};
  toolkit::Icon picture_;
  bool active_ = false, isRefused_ = false;
  int retriesLeft_ = 0;  // left while the shell refuses the icon
  bool dispatching_ = false;
};

}  // namespace toolkit
