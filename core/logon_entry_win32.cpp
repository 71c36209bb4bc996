#include "core/logon_entry.h"

#include <windows.h>

#include "core/process.h"

namespace core {
namespace {

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

void WriteRunValue(const std::string& command) {
  RegistryKey key;
  if (::RegCreateKeyExA(HKEY_CURRENT_USER, kRunKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Slot(), nullptr) != 0) {
    return;
  }
  // For compatibility the size excludes the closing zero; the system adds it when the value is read.
  ::RegSetValueExA(key.Get(), kProgramName, 0, REG_SZ, reinterpret_cast<const BYTE*>(command.c_str()),
                   static_cast<DWORD>(command.size()));
}

void DeleteRunValue() {
  RegistryKey key;
  if (::RegOpenKeyExA(HKEY_CURRENT_USER, kRunKey, 0, KEY_SET_VALUE, key.Slot()) != 0) return;
  ::RegDeleteValueA(key.Get(), kProgramName);
}

}  // namespace core
