#include "core/process.h"

#include <windows.h>

#include "core/text.h"

namespace core {
namespace {

constexpr char kMutexPrefix[] = "Local\\Quillon-";

}  // namespace

std::string GetLogonName() {
  char name[400];
  DWORD size = sizeof name;  // comes back with the zero counted
  if (!::GetUserNameA(name, &size) || size == 0) return {};
  return std::string(name, size - 1);
}

bool AnotherCopyRuns() {
  // Held until the process ends. Access is denied when the copy that made it runs with higher rights.
  const HANDLE mutex = ::CreateMutexA(nullptr, FALSE, (kMutexPrefix + GetLogonName()).c_str());
  const DWORD code = ::GetLastError();
  return mutex == nullptr ? code == ERROR_ACCESS_DENIED : code == ERROR_ALREADY_EXISTS;
}

std::string ProgramFileTitle() {
  char path[MAX_PATH];
  const DWORD length = ::GetModuleFileNameA(nullptr, path, MAX_PATH);
  std::string title(path, length);
  title.erase(0, FindLast(title, "\\") + 1);
  return title.substr(0, title.rfind('.'));
}

// Not ::ExitProcess: that lets the C library of Windows run the destructors of statics while windows still stand.
void EndProcess() { ::TerminateProcess(::GetCurrentProcess(), 0); }

}  // namespace core
