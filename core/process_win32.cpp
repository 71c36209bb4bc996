#include "core/process.h"

#include <windows.h>

#include "core/files_win32.h"
#include "core/text.h"

namespace core {
namespace {

constexpr char kMutexPrefix[] = "Local\\Quillon-";
constexpr char kRunKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";

class RegistryKey {
 public:
  RegistryKey() = default;
  ~RegistryKey() {
    if (key_ != nullptr) ::RegCloseKey(key_);
  }
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;
  HKEY* Slot() { return &key_; }
  HKEY Get() const { return key_; }

 private:
  HKEY key_ = nullptr;
};

}  // namespace

std::string GetLogonName() {
  char name[400];
  DWORD size = sizeof name;  // on return the length with the terminating NUL
  if (!::GetUserNameA(name, &size) || size == 0) return {};
  return std::string(name, size - 1);
}

bool AnotherCopyRuns() {
  // Never closed, so that it exists until the process ends. Access is denied when the other copy runs elevated.
  const HANDLE mutex = ::CreateMutexA(nullptr, FALSE, (kMutexPrefix + GetLogonName()).c_str());
  const DWORD code = ::GetLastError();
  return mutex == nullptr ? code == ERROR_ACCESS_DENIED : code == ERROR_ALREADY_EXISTS;
}

std::string ProgramFileTitle() {
  std::string title = ProgramPath();
  title.erase(0, FindLast(title, "\\") + 1);
  return title.substr(0, title.rfind('.'));
}

// Not ::ExitProcess, which would let the C library run the destructors of statics while windows still exist.
void EndProcess() { ::TerminateProcess(::GetCurrentProcess(), 0); }

void WriteRunValue(const std::string& command) {
  RegistryKey key;
  if (::RegCreateKeyExA(HKEY_CURRENT_USER, kRunKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Slot(), nullptr) != 0) {
    return;
  }
  // For compatibility the size excludes the terminating NUL; the system adds it when the value is read.
  ::RegSetValueExA(key.Get(), kProgramName, 0, REG_SZ, reinterpret_cast<const BYTE*>(command.c_str()),
                   static_cast<DWORD>(command.size()));
}

void DeleteRunValue() {
  RegistryKey key;
  if (::RegOpenKeyExA(HKEY_CURRENT_USER, kRunKey, 0, KEY_SET_VALUE, key.Slot()) != 0) return;
  ::RegDeleteValueA(key.Get(), kProgramName);
}

}  // namespace core
