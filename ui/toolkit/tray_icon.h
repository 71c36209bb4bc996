// One icon with a tool-tip in the notification area of the task bar, and its mouse as events. The icon never outlives
// this object.
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

  // Raised by the mouse on the icon. A message that arrives while one of them runs is dropped; what they throw is
  // ignored, since the shell cannot hear of it.
  std::function<void(MouseButton)> MouseDown, MouseUp, MouseDblClk;
  std::function<void()> ShowParent;     // after a left double click
  std::function<void()> ShowPopUpMenu;  // after the right button is released

  static constexpr UINT kRetryTime = 2000;  // milliseconds
  static constexpr int kRetries = 30;

  // True when this Windows has a notification area.
  static bool HasValidShell();

  // Raised when the shell has refused the icon for a minute. It appears all the same once the shell says that it has a
  // task bar.
  std::function<void()> Refused;

  // Puts the icon up, in place of one that is already there. Without a valid shell it stays inactive. A shell that is
  // busy, as at a logon, is asked again every kRetryTime.
  void Create();
  void Destroy();
  bool Active() const { return active_; }

  // True while there is no icon because the shell took none within the minute; until it makes a new task bar.
  bool IsRefused() const { return isRefused_; }

  // The icon shown: a bare handle of somebody else's, or a picture that this object keeps from then on. Shown at once
  // while active, else by the next Create.
  HICON Icon() const { return record_.hIcon; }
  void SetIcon(HICON icon);
  HICON Picture() const { return picture_.get(); }
  void SetPicture(toolkit::Icon picture);

  // Cut to what the record holds, 63 bytes.
  std::string ToolTipText() const;
  void SetToolTipText(std::string_view text);

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  static HWND MakeWindow(TrayIcon* self);
  void MouseMove(UINT mouseMessage);
  void Raise(TrayEvent event, MouseButton button);
  bool Add();
  void TryAgain();
  bool Send(DWORD message, UINT flags);

  ShellNotify shell_;
  NOTIFYICONDATAA record_{};
  toolkit::Icon picture_;
  bool active_ = false, isRefused_ = false;
  int retriesLeft_ = 0;  // while the shell does not take the icon
  bool dispatching_ = false;
};

}  // namespace toolkit
