// The number of GDI and USER objects of this process, to detect leaks.
#pragma once

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace toolkit {

struct ObjectCount {
  int gdi, user;
};

// The low word of a handle is its position in the handle table.
inline int SlotOf(const void* handle) { return static_cast<int>(reinterpret_cast<std::uintptr_t>(handle) & 0xFFFFu); }

template <class Make, class Free>
int HighestPlace(Make make, Free free) {
  std::array<decltype(make()), 200> probes{};  // more than the number of free positions
  int highest = 0;
  for (auto& probe : probes) highest = std::max(highest, SlotOf(probe = make()));
  for (const auto probe : probes) free(probe);
  return highest;
}

inline int Counted(DWORD kind) { return static_cast<int>(::GetGuiResources(::GetCurrentProcess(), kind)); }

// Wine does not count objects; there the result is the highest position in the handle tables. Freed positions are
// reused first, so it grows with leaked objects only.
inline ObjectCount CountObjects() {
  if (const int gdi = Counted(GR_GDIOBJECTS); gdi > 0) return {gdi, Counted(GR_USEROBJECTS)};
  return {HighestPlace([] { return ::CreateSolidBrush(RGB(1, 2, 3)); }, [](HBRUSH brush) { ::DeleteObject(brush); }),
          HighestPlace([] { return ::CreateMenu(); }, [](HMENU menu) { ::DestroyMenu(menu); })};
}

}  // namespace toolkit
