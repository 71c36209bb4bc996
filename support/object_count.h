// How many GDI and USER objects this process holds, to see that something done a thousand times leaves nothing behind.
#pragma once

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace toolkit {

struct ObjectCount {
  int gdi, user;
};

// The place of a handle in its table is its low word.
inline int PlaceInTable(const void* handle) {
  return static_cast<int>(reinterpret_cast<std::uintptr_t>(handle) & 0xFFFFu);
}

template <class Make, class Free>
int HighestPlace(Make make, Free free) {
  std::array<decltype(make()), 200> probes{};  // more than there are freed places
  int highest = 0;
  for (auto& probe : probes) highest = std::max(highest, PlaceInTable(probe = make()));
  for (const auto probe : probes) free(probe);
  return highest;
}

inline int Counted(DWORD kind) { return static_cast<int>(::GetGuiResources(::GetCurrentProcess(), kind)); }

// Under Wine, which counts nothing, how far its handle tables have been filled: freed places are taken again first, so
// that the figures grow with objects that are never freed and with nothing else.
inline ObjectCount CountObjects() {
  if (const int gdi = Counted(GR_GDIOBJECTS); gdi > 0) return {gdi, Counted(GR_USEROBJECTS)};
  return {HighestPlace([] { return ::CreateSolidBrush(RGB(1, 2, 3)); }, [](HBRUSH brush) { ::DeleteObject(brush); }),
          HighestPlace([] { return ::CreateMenu(); }, [](HMENU menu) { ::DestroyMenu(menu); })};
}

}  // namespace toolkit
