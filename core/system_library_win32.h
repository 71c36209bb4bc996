// Libraries of the system that are loaded while the program runs. The program's folder may be writable for others, so
// no file beside the program may take the place of one of them.
#pragma once

#include <windows.h>

namespace core {

// From now on libraries are looked for in the system's folder only, neither beside the program nor in the current
// folder. Before the first window: the system loads libraries for some of them.
void SearchSystemLibrariesOnly();

// Loads a library by its full path and keeps it; null when the system has none of that name.
HMODULE LoadSystemLibrary(const char* name);

}  // namespace core
