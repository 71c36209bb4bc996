// The version of the program, written once. The resource compiler reads this file too, so it holds macros and nothing
// that only a C++ compiler understands.
#pragma once

#define QUILLON_VERSION_MAJOR 1
#define QUILLON_VERSION_MINOR 1
#define QUILLON_VERSION_REVISION 0
