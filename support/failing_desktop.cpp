#include "support/failing_desktop.h"

#include <cstdint>
#include <string_view>

namespace support {
namespace {

using Kind = FailOneCreation::Kind;

int gBefore = -1;  // creations that succeed before one fails; negative = all
Kind gWhat = Kind::Nothing;

bool Refuses(Kind kind) {
  if (gBefore < 0 || gBefore-- > 0) return false;
  gWhat = kind;
  return true;
}

// Also called for the windows of system controls and message boxes.
LRESULT CALLBACK OnWindow(int code, WPARAM wParam, LPARAM lParam) {
  return code == HCBT_CREATEWND && Refuses(Kind::Window) ? 1 : ::CallNextHookEx(nullptr, code, wParam, lParam);
}

template <class Part>
Part* At(DWORD offset) {
  return reinterpret_cast<Part*>(reinterpret_cast<std::uintptr_t>(::GetModuleHandleA(nullptr)) + offset);
}

// The entry of a function in the program's import table; null if the program does not import it.
ULONG_PTR* ImportOf(std::string_view name) {
  const auto* const headers = At<IMAGE_NT_HEADERS>(static_cast<DWORD>(At<IMAGE_DOS_HEADER>(0)->e_lfanew));
  const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(imports); library->Name != 0; ++library) {
    auto* address = At<IMAGE_THUNK_DATA>(library->FirstThunk);
    for (auto* row = At<IMAGE_THUNK_DATA>(library->OriginalFirstThunk); row->u1.AddressOfData != 0; ++row, ++address) {
      const auto* const function = At<IMAGE_IMPORT_BY_NAME>(static_cast<DWORD>(row->u1.AddressOfData));
      if (!IMAGE_SNAP_BY_ORDINAL(row->u1.Ordinal) && name == function->Name) return &address->u1.Function;
    }
  }
  return nullptr;
}

// Hooks an imported function that creates an object. The index distinguishes functions of the same type.
template <int Index, Kind What, class Function>
class Import;

template <int Index, Kind What, class Made, class... Arguments>
class Import<Index, What, Made(WINAPI*)(Arguments...)> {
 public:
  explicit Import(const char* name) {
    ULONG_PTR* const place = ImportOf(name);
    if (!place) return;
    DWORD former = 0;
    ::VirtualProtect(place, sizeof *place, PAGE_READWRITE, &former);
    real_ = reinterpret_cast<decltype(real_)>(*place);
    *place = reinterpret_cast<ULONG_PTR>(&Make);
  }

 private:
  static Made WINAPI Make(Arguments... arguments) { return Refuses(What) ? nullptr : real_(arguments...); }

  static inline Made(WINAPI* real_)(Arguments...) = nullptr;
};

void WatchImports() {
  static const Import<0, Kind::Menu, decltype(&::CreateMenu)> menus("CreateMenu");
  static const Import<1, Kind::Menu, decltype(&::CreatePopupMenu)> popUpMenus("CreatePopupMenu");
  static const Import<2, Kind::FontOrIcon, decltype(&::CreateFontIndirectA)> fonts("CreateFontIndirectA");
  static const Import<3, Kind::FontOrIcon, decltype(&::LoadImageA)> icons("LoadImageA");
}

}  // namespace

FailOneCreation::FailOneCreation(int before)
    : hook_(::SetWindowsHookExA(WH_CBT, OnWindow, nullptr, ::GetCurrentThreadId())) {
  WatchImports();
  gBefore = before;
  gWhat = Kind::Nothing;
}

FailOneCreation::~FailOneCreation() {
  ::UnhookWindowsHookEx(hook_);
  gBefore = -1;
}

FailOneCreation::Kind FailOneCreation::What() { return gWhat; }

FewGdiObjects::FewGdiObjects(int left) {
  while (const HBRUSH brush = ::CreateSolidBrush(RGB(1, 2, 3))) taken_.push_back(brush);
  for (; left > 0 && !taken_.empty(); --left, taken_.pop_back()) ::DeleteObject(taken_.back());
}

FewGdiObjects::~FewGdiObjects() {
  for (const HBRUSH brush : taken_) ::DeleteObject(brush);
}

}  // namespace support
