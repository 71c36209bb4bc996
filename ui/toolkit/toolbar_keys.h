// The keyboard in a toolbar: it takes part in the Tab order, the arrows go from button to button, Space and Enter
// click.
#pragma once

#include <windows.h>

namespace toolkit {

// The toolbar's window reports the clicks to its parent as it does those of the mouse.
void GiveKeys(HWND toolbar);

}  // namespace toolkit
