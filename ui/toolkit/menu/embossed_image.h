// The image of a disabled menu item: its shape pressed into the background.
#pragma once

#include <windows.h>
#include <commctrl.h>

namespace toolkit {

// Draws image `index` at the point, in the light and the dark of the system's 3D colours. Draws nothing when memory is
// short.
void DrawEmbossed(HDC dc, HIMAGELIST images, int index, POINT at);

}  // namespace toolkit
