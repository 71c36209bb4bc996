// The program's pictures, in the size for the screen's resolution.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include "res/pictures.h"
#include "ui/toolkit/handles.h"

namespace toolkit {

// The pictures of one strip as an image list, created on the first call and kept for the whole run. Indices:
// res/pictures.h. Size and count are valid at once, the pictures are there after LoadPictures.
HIMAGELIST SharedPictures(res::Strip strip);

// Loads the pictures of all image lists, those created later at once. Called by every window before it is shown:
// decompressing the pictures takes longer than everything else between the start and the first packet, and no window
// with pictures is visible until then.
void LoadPictures();

// Side of one picture of the strip on this screen, pixels.
int PictureSize(res::Strip strip);

// One picture of a strip as an icon.
Icon LoadPicture(res::Strip strip, int picture, int side);

// The program's icon: shared, in a system size (SM_CXICON or SM_CXSMICON), or owned by the caller, in any size.
HICON ProgramIcon(int widthMetric);
Icon LoadProgramIcon(int side);

}  // namespace toolkit
