// Counts the system objects of a program in the same Windows installation, for the soak test. Reads process ids from
// stdin, one a line, and answers each with three numbers: kernel handles, GDI objects, USER objects. Reads the tables
// themselves, because Wine does not count objects for other processes; their layouts are those of Windows.
#include <windows.h>

#include <winternl.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace {

constexpr auto kSystemHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);

struct HandleEntry {
  ULONG process;
  BYTE type, flags;
  USHORT value;
  void* object;
  ACCESS_MASK access;
};

struct HandleTable {
  ULONG count;
  HandleEntry entries[1];
};

long CountHandles(DWORD process) {
  std::vector<char> buffer(1 << 20);
  ULONG needed = 0;
  while (::NtQuerySystemInformation(kSystemHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size()),
                                    &needed) == static_cast<NTSTATUS>(0xC0000004))
    buffer.resize(2 * buffer.size());
  const auto* table = reinterpret_cast<const HandleTable*>(buffer.data());
  return static_cast<long>(std::count_if(table->entries, table->entries + table->count,
                                         [process](const HandleEntry& entry) { return entry.process == process; }));
}

// An entry of the GDI handle table, to which every process environment block has a pointer.
struct GdiEntry {
  std::uint64_t object;
  std::uint32_t owner;
  std::uint16_t unique;
  std::uint8_t type, flags;
  std::uint64_t userPointer;
};
static_assert(sizeof(GdiEntry) == 24);
constexpr std::size_t kGdiEntries = 16384, kGdiTableInPeb = 0x94;

template <class Value>
bool Read(HANDLE process, const void* address, Value* values, std::size_t count = 1) {
  return ::ReadProcessMemory(process, address, values, count * sizeof *values, nullptr);
}

long CountGdi(HANDLE process) {
  PROCESS_BASIC_INFORMATION about{};
  char* table = nullptr;
  std::vector<GdiEntry> entries(kGdiEntries);
  if (::NtQueryInformationProcess(process, ProcessBasicInformation, &about, sizeof about, nullptr) != 0 ||
      !Read(process, reinterpret_cast<char*>(about.PebBaseAddress) + kGdiTableInPeb, &table) ||
      !Read(process, table, entries.data(), entries.size()))
    return -1;
  return static_cast<long>(std::ranges::count_if(entries, [](const GdiEntry& entry) { return entry.type != 0; }));
}

// All programs of the installation share one table, and freed entries are reused first. So after allocating more
// entries than are free, the highest index tells how many are in use.
long CountUser() {
  std::vector<HMENU> menus(6000);
  long highest = 0;
  for (HMENU& menu : menus) {
    menu = ::CreateMenu();
    highest = std::max(highest, static_cast<long>(reinterpret_cast<std::uintptr_t>(menu) & 0xFFFFu) / 2);
  }
  for (const HMENU menu : menus) ::DestroyMenu(menu);
  return highest - static_cast<long>(menus.size());
}

}  // namespace

int main() {
  for (std::string line; std::getline(std::cin, line);) {
    const DWORD id = std::stoul(line);
    const HANDLE process = ::OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, id);
    std::printf("%ld %ld %ld\n", CountHandles(id), CountGdi(process), CountUser());
    std::fflush(stdout);
    ::CloseHandle(process);
  }
  return 0;
}
