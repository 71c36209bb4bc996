// Saves a file repeatedly, in the same way as the settings, until it is killed: saver FOLDER PATH. First deletes what
// earlier ones left in the folder. Each text repeats its number in a varying number of lines, so that successive texts
// differ in size, and ends in "end". Prints the number after each save.
#include <cstdio>
#include <string>

#include "core/files.h"

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  core::RemoveLeftovers(argv[1]);
  for (int number = 1;; ++number) {
    std::string text;
    for (int line = 0; line < number * 37 % 200 + 1; ++line) text += std::to_string(number) + "\r\n";
    core::WriteFileSafely(argv[2], text + "end");
    std::printf("%d\n", number);
    std::fflush(stdout);
  }
}
