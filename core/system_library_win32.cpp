#include "core/system_library_win32.h"

#include <string>

namespace core {
namespace {

constexpr DWORD kSystemFolderOnly = 0x800;  // LOAD_LIBRARY_SEARCH_SYSTEM32

using SetSearch = BOOL(WINAPI*)(DWORD folders);

}  // namespace

void SearchSystemLibrariesOnly() {
  ::SetDllDirectoryA("");
  // Looked up at run time, because Windows 7 without updates lacks it.
  const auto function = ::GetProcAddress(::GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories");
  if (function) reinterpret_cast<SetSearch>(reinterpret_cast<void (*)()>(function))(kSystemFolderOnly);
}

// LOAD_WITH_ALTERED_SEARCH_PATH makes the library's own dependencies come from its folder first.
HMODULE LoadSystemLibrary(const char* name) {
  char folder[MAX_PATH];
  const UINT length = ::GetSystemDirectoryA(folder, MAX_PATH);
  const std::string path = std::string(folder, length).append(1, '\\').append(name);
  return ::LoadLibraryExA(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

}  // namespace core
