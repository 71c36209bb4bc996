// Keeps a file open without sharing it, as a backup program may, until its input ends: holder FILE. Prints a line once
// the file is open.
#include <windows.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  if (::CreateFileA(argv[1], GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr) == INVALID_HANDLE_VALUE) return 1;
  std::puts("held");
  std::fflush(stdout);
  std::getchar();
}
