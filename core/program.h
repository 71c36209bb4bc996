// The windows and the network as start-up, shutdown and the settings see them.
#pragma once

#include <cstdint>

#include "core/roster.h"

namespace core {

// Position and size of a window on the screen, in twips.
struct WindowBounds {
  std::int32_t left = 0, top = 0, width = 0, height = 0;
  friend bool operator==(const WindowBounds&, const WindowBounds&) = default;
};

class Program {
 public:
  virtual ~Program() = default;

  // Creates the main window, hidden, unless it exists.
  virtual void LoadMain() = 0;

  // Moves the main window, loading it first. Does not clamp to the screen.
  virtual void MoveMain(const WindowBounds& bounds) = 0;

  // Restores the main window from its minimised or maximised state without showing it; returns its normal bounds.
  virtual WindowBounds RestoreMain() = 0;

  virtual Roster& Users() = 0;

  // Shows the splash at the bottom right of the work area, topmost, without blocking.
  virtual void ShowSplash() = 0;
  virtual void HideSplash() = 0;

  // Width and height of the whole screen, twips (left and top are 0).
  virtual WindowBounds Screen() = 0;

  // Joins the network under gCurName, and leaves it. OpenSocket throws the socket's error.
  virtual void OpenSocket() = 0;
  virtual void CloseSocket() = 0;

  // The modal options dialog during start-up: the user must choose another name or end the program.
  virtual void ShowOptionsAtStartUp() = 0;

  virtual void ShowTray() = 0;
  virtual void RemoveTray() = 0;
};

}  // namespace core
