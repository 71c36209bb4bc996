#include "core/desktop.h"

#include <windows.h>

#include <utility>

#include "core/box_queue.h"
#include "core/files.h"
#include "core/sound_win32.h"
#include "core/text.h"

namespace core {
namespace {

constexpr char kMutexPrefix[] = "Local\\Quillon-";
constexpr char kRunKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";

BoxQueue gPostedBoxes;

UINT IconStyle(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::None:
      return 0;
    case BoxIcon::Information:
      return MB_ICONINFORMATION;
    case BoxIcon::Exclamation:
      return MB_ICONEXCLAMATION;
    case BoxIcon::Critical:
      return MB_ICONERROR;
  }
  return 0;
}

int Show(const Box& box, UINT buttons) {
  return ::MessageBoxA(nullptr, box.text.c_str(), box.title.c_str(), MB_TASKMODAL | IconStyle(box.icon) | buttons);
}

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

SYSTEMTIME Now() {
  SYSTEMTIME now{};
  ::GetLocalTime(&now);
  return now;
}

std::string ShortDate(const SYSTEMTIME& when) {
  char text[128];
  const int size = ::GetDateFormatA(LOCALE_USER_DEFAULT, DATE_SHORTDATE, &when, nullptr, text, sizeof text);
  return size > 0 ? std::string(text, static_cast<std::size_t>(size) - 1) : std::string();
}

std::string LongTime(const SYSTEMTIME& when) {
  char text[128];
  const int size = ::GetTimeFormatA(LOCALE_USER_DEFAULT, 0, &when, nullptr, text, sizeof text);
  return size > 0 ? std::string(text, static_cast<std::size_t>(size) - 1) : std::string();
}

}  // namespace

void ShowBox(const Box& box) { Show(box, MB_OK); }

bool AskBox(const Box& box) { return Show(box, MB_YESNO) == IDYES; }

void PostBox(Box box) {
  gPostedBoxes.Post(std::move(box));
  // The loop may be asleep: what posts a box can run inside its wait, out of a message sent by another thread.
  ::PostThreadMessageA(::GetCurrentThreadId(), WM_NULL, 0, 0);
}

// Topmost, or an alert popup would cover the box and, disabled by it, could not be moved out of its way.
void ShowPostedBoxes() {
  gPostedBoxes.ShowAll([](const Box& box) { Show(box, MB_OK | MB_TOPMOST); });
}

void Beep() { ::MessageBeep(MB_OK); }

void PlayAlertSound(const std::string& key) {
  if (key == "(S)") return;
  if (key == "(B)") {
    Beep();
  } else {
    PlaySnd(InProgramDirectory(key));
  }
}

std::string ClockText() {
  const SYSTEMTIME now = Now();  // asked once: midnight must not fall between the date and the time
  return std::string(Trim(ShortDate(now) + " " + LongTime(now)));
}

std::string TimeText() { return LongTime(Now()); }

std::string LogonName() {
  char name[400];
  DWORD size = sizeof name;  // comes back with the zero counted
  if (!::GetUserNameA(name, &size) || size == 0) return {};
  return std::string(name, size - 1);
}

bool AnotherCopyRuns() {
  // Held until the process ends. Access is denied when the copy that made it runs with higher rights.
  const HANDLE mutex = ::CreateMutexA(nullptr, FALSE, (kMutexPrefix + LogonName()).c_str());
  const DWORD code = ::GetLastError();
  return mutex == nullptr ? code == ERROR_ACCESS_DENIED : code == ERROR_ALREADY_EXISTS;
}

std::int32_t TickCount() { return static_cast<std::int32_t>(::GetTickCount()); }

void WriteRunValue(const std::string& command) {
  RegistryKey key;
  if (::RegCreateKeyExA(HKEY_CURRENT_USER, kRunKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.Slot(), nullptr) != 0) {
    return;
  }
  // Counted without the closing zero, as this value always was; the system adds what it finds behind the text.
  ::RegSetValueExA(key.Get(), kProgramName, 0, REG_SZ, reinterpret_cast<const BYTE*>(command.c_str()),
                   static_cast<DWORD>(command.size()));
}

void DeleteRunValue() {
  RegistryKey key;
  if (::RegOpenKeyExA(HKEY_CURRENT_USER, kRunKey, 0, KEY_SET_VALUE, key.Slot()) != 0) return;
  ::RegDeleteValueA(key.Get(), kProgramName);
}

std::string ProgramFileTitle() {
  char path[MAX_PATH];
  const DWORD length = ::GetModuleFileNameA(nullptr, path, MAX_PATH);
  std::string title(path, length);
  title.erase(0, title.rfind('\\') + 1);
  return title.substr(0, title.rfind('.'));
}

// Not ::ExitProcess: that lets the C library of Windows run the destructors of statics while windows still stand.
void EndProcess() { ::TerminateProcess(::GetCurrentProcess(), 0); }

}  // namespace core
