// Showing a window modally.
#pragma once

#include "ui/toolkit/window.h"

namespace toolkit {

// Shows the window and returns when it is destroyed or hidden; it is destroyed then. Meanwhile every other window that
// the program had on the screen is disabled; windows that open later (a popup, a chat that somebody starts) can be
// used. Packets, timers and posted boxes go on. Afterwards the window that was in front before is in front again.
void RunModal(Window& window);

}  // namespace toolkit
