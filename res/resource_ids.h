// The numbers of those resources in Quillon.exe that are not pictures of a strip (res/pictures.h). The resource
// compiler reads this file too, which is why the numbers are macros first.
#pragma once

#define QUILLON_PROGRAM_ICON 1

#ifndef RC_INVOKED
namespace res {

// The lowest icon number of all: the shell shows that icon for the program.
constexpr int kProgramIcon = QUILLON_PROGRAM_ICON;

}  // namespace res
#endif
