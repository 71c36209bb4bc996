// Saves a file again and again, as the settings are saved, until it is killed: saver PATH. Each text is of one number,
// as many lines long as makes every one differ in size from the one before, and an end; the number is printed when it
// is saved.
#include <cstdio>
#include <string>

#include "core/files.h"

int main(int count, char** words) {
  if (count != 2) return 2;
  for (int number = 1;; ++number) {
    std::string text;
    for (int line = 0; line < number * 37 % 200 + 1; ++line) text += std::to_string(number) + "\r\n";
    core::WriteFileSafely(words[1], text + "end");
    std::printf("%d\n", number);
    std::fflush(stdout);
  }
}
