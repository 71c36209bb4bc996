// The program's pictures in the size of the screen's scaling.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include "res/pictures.h"
#include "ui/toolkit/handles.h"

namespace toolkit {

// The pictures of one strip as an image list, made at the first call and kept for the whole run. Indices:
// res/pictures.h. It has its size and count at once, its pictures from LoadPictures on.
HIMAGELIST SharedPictures(res::Strip strip);

// Loads the pictures of all image lists handed out so far, and from now on of others at once. Every window calls it
// before it is shown: unpacking dozens of pictures takes longer than all else that happens between the program's start
// and its first packet, and by then no window with pictures is seen.
void LoadPictures();

// Side of one picture of the strip on this screen, pixels.
int PictureSize(res::Strip strip);

// One picture of a strip as an icon of its own.
Icon LoadPicture(res::Strip strip, int picture, int side);

// The program's icon in a system size (SM_CXICON or SM_CXSMICON), shared, and in any size, to be owned.
HICON ProgramIcon(int widthMetric);
Icon LoadProgramIcon(int side);

}  // namespace toolkit
