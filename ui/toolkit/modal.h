// Showing a window modally.
#pragma once

#include "ui/toolkit/window.h"

namespace toolkit {

// Shows the window and returns when it is closed by CloseModal; it is destroyed then. Hiding it, as the desktop does
// when its owner is minimised, ends nothing. Meanwhile every other window that the program has, hidden ones too, is
// disabled; windows that open later (a popup, a chat that somebody starts) can be used. Packets, timers and posted
// boxes go on. Afterwards the window that was in front before is in front again.
void RunModal(Window& window);

// Brings the window that is shown modally to the front, if there is one, also out of hiding.
void RaiseModal();

// Destroys a window that may be shown modally. The others can be used again before it goes: Windows gives the
// foreground to the next window that is enabled, and that would be another program's.
void CloseModal(Window& window);

}  // namespace toolkit
