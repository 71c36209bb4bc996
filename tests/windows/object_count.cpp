#include "tests/windows/object_count.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace toolkit {
namespace {

constexpr std::size_t kProbes = 200;  // more than there are freed places

// The place of a handle in its table is its low word.
int PlaceOf(const void* handle) { return static_cast<int>(reinterpret_cast<std::uintptr_t>(handle) & 0xFFFFu); }

template <class Make, class Free>
int HighestPlace(Make make, Free free) {
  std::array<decltype(make()), kProbes> probes{};
  int highest = 0;
  for (auto& probe : probes) highest = std::max(highest, PlaceOf(probe = make()));
  for (const auto probe : probes) free(probe);
  return highest;
}

int Counted(DWORD kind) { return static_cast<int>(::GetGuiResources(::GetCurrentProcess(), kind)); }

}  // namespace

ObjectCount CountObjects() {
  if (const int gdi = Counted(GR_GDIOBJECTS); gdi > 0) return {gdi, Counted(GR_USEROBJECTS)};
  return {HighestPlace([] { return ::CreateSolidBrush(RGB(1, 2, 3)); }, [](HBRUSH brush) { ::DeleteObject(brush); }),
          HighestPlace([] { return ::CreateMenu(); }, [](HMENU menu) { ::DestroyMenu(menu); })};
}

}  // namespace toolkit
