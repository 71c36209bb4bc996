// Showing a window modally.
#pragma once

#include "ui/toolkit/window.h"

namespace toolkit {

// Shows the window and returns when CloseModal has destroyed it. Hiding it, as the desktop does when its owner is
// minimised, does not end the call. All other windows of the program, including hidden ones, are disabled meanwhile;
// windows that open later (a popup, an incoming chat) stay usable. Packets, timers and posted message boxes are
// handled. Afterwards the window that was active before is activated again.
void RunModal(Window& window);

// Shows the modal window, if there is one, and brings it to the front.
void RaiseModal();

// Destroys a window, whether modal or not. The other windows are enabled first: otherwise Windows would activate
// another program's window.
void CloseModal(Window& window);

}  // namespace toolkit
