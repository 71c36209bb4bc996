// The stack canary of -fstack-protector-strong, which detects buffer overflows before a function returns. The
// compiler's own library has one too, but gets it from the system's cryptography, which is slow to load.
#include <windows.h>

#include <cstdint>
#include <initializer_list>

extern "C" {

// The compiler requires these names.
std::uintptr_t __stack_chk_guard = 0x5B3D0A00u;

// The process can no longer be trusted, not even to report the overflow.
[[noreturn]] void __stack_chk_fail() {
  constexpr UINT kStackBufferOverrun = 0xC0000409u;
  ::TerminateProcess(::GetCurrentProcess(), kStackBufferOverrun);
  for (;;) ::Sleep(INFINITE);
}
}

namespace {

// Runs before all other code. Seeded from values that differ per run and are not visible on the network; the low byte
// stays zero, so a string copy stops at it.
__attribute__((constructor(101), no_stack_protector)) void InitStackGuard() {
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
