// A text box that takes so many bytes and no more. The system's own limit counts letters, and on systems whose letters
// have two bytes a text of that many letters may not fit a datagram.
#pragma once

#include <windows.h>

#include <cstddef>

namespace toolkit {

// Holds for what is typed and pasted, not for texts that the program sets.
void LimitBytes(HWND box, std::size_t bytes);

}  // namespace toolkit
