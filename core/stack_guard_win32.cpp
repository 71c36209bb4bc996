// The number that a function with a buffer puts behind it and compares before it returns (-fstack-protector-strong), so
// that what was written beyond the buffer cannot lead elsewhere. The compiler's own library has this too, but asks the
// system's cryptography for the number, which is slow to load.
#include <windows.h>

#include <cstdint>
#include <initializer_list>

extern "C" {

// The compiler knows both by these names.
std::uintptr_t __stack_chk_guard = 0x5B3D0A00u;

// The process can no longer be trusted with anything, not even with telling so.
[[noreturn]] void __stack_chk_fail() {
  constexpr UINT kStackBufferOverrun = 0xC0000409u;
  ::TerminateProcess(::GetCurrentProcess(), kStackBufferOverrun);
  for (;;) ::Sleep(INFINITE);
}
}

namespace {

// Before every other code of the program. From what differs from run to run and cannot be seen on the network; the low
// byte stays zero, which ends a text that is copied over it.
__attribute__((constructor(101), no_stack_protector)) void ChooseGuard() {
  LARGE_INTEGER counter{};
  ::QueryPerformanceCounter(&counter);
  FILETIME time{};
  ::GetSystemTimeAsFileTime(&time);
  std::uint64_t mixed = static_cast<std::uint64_t>(counter.QuadPart) ^ reinterpret_cast<std::uintptr_t>(&counter);
  for (const DWORD part : {time.dwLowDateTime, ::GetCurrentProcessId(), ::GetCurrentThreadId(), ::GetTickCount()})
    mixed = (mixed ^ part) * 0x9E3779B97F4A7C15u;
  __stack_chk_guard = static_cast<std::uintptr_t>(mixed >> 24) & ~std::uintptr_t{0xFF};
}

}  // namespace
