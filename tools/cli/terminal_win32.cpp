#include <windows.h>

#include "tools/cli/terminal.h"

namespace {

std::string Utf8(const wchar_t* wide) {
  const int size = ::WideCharToMultiByte(CP_UTF8, 0, wide, -1, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  ::WideCharToMultiByte(CP_UTF8, 0, wide, -1, text.data(), size, nullptr, nullptr);
  text.pop_back();  // the terminating NUL
  return text;
}

}  // namespace

// Sets the console to UTF-8 and restores it, because the code page outlives the program.
int wmain(int argc, wchar_t** argv) {
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; ++i) arguments.push_back(Utf8(argv[i]));
  const UINT before = ::GetConsoleOutputCP();
  ::SetConsoleOutputCP(CP_UTF8);
  const int code = cli::Main(arguments);
  ::SetConsoleOutputCP(before);
  return code;
}
