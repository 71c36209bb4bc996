// Loading of system libraries at run time. The program's folder may be writable for others, so a file in it must never
// be loaded in place of a system library.
#pragma once

#include <windows.h>

namespace core {

// Restricts the search for libraries to the system's folder. To be called before the first window, since the system may
// load libraries for it.
void SearchSystemLibrariesOnly();

// Loads a library from the system's folder by its full path and never frees it; null when there is none with that name.
HMODULE LoadSystemLibrary(const char* name);

}  // namespace core
