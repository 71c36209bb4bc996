// The embossed image of a disabled menu item.
#pragma once

#include <windows.h>
#include <commctrl.h>

namespace toolkit {

// Draws image `index` at the point, in the light and dark 3D colours of the system. Draws nothing when out of memory.
void DrawEmbossed(HDC dc, HIMAGELIST images, int index, POINT at);

}  // namespace toolkit
