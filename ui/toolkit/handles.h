// Move-only owners of Windows handles, each with its own release function.
#pragma once

#include <windows.h>
#include <commctrl.h>

#include <utility>

#include "core/runtime_error.h"

namespace toolkit {

// The module of the program, which its window classes and resources belong to.
inline HINSTANCE Instance() { return ::GetModuleHandleA(nullptr); }

// Returns a window or menu that was just created. Throws core::Err::OutOfMemory when it is null.
template <class Handle>
Handle Created(Handle handle) {
  if (!handle) throw core::RuntimeError(core::Err::OutOfMemory);
  return handle;
}

template <class Handle, class Deleter>
class UniqueHandle {
 public:
  UniqueHandle() = default;
  explicit UniqueHandle(Handle handle) : handle_(handle) {}
  UniqueHandle(UniqueHandle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  UniqueHandle& operator=(UniqueHandle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  ~UniqueHandle() {
    if (handle_) Deleter::Free(handle_);
  }

  Handle get() const { return handle_; }
  Handle release() { return std::exchange(handle_, nullptr); }
  explicit operator bool() const { return handle_ != nullptr; }

 private:
  Handle handle_ = nullptr;
};

// Fonts, brushes, bitmaps and regions are all released by ::DeleteObject.
struct ObjectDeleter {
  static void Free(HGDIOBJ object) { ::DeleteObject(object); }
};
struct ImageListDeleter {
  static void Free(HIMAGELIST list) { ::ImageList_Destroy(list); }
};
struct IconDeleter {
  static void Free(HICON icon) { ::DestroyIcon(icon); }
};
struct MenuDeleter {
  static void Free(HMENU menu) { ::DestroyMenu(menu); }
};
struct MemoryDcDeleter {
  static void Free(HDC dc) { ::DeleteDC(dc); }
};

using Font = UniqueHandle<HFONT, ObjectDeleter>;
using Brush = UniqueHandle<HBRUSH, ObjectDeleter>;
using Bitmap = UniqueHandle<HBITMAP, ObjectDeleter>;
using ImageList = UniqueHandle<HIMAGELIST, ImageListDeleter>;
using Icon = UniqueHandle<HICON, IconDeleter>;
using Menu = UniqueHandle<HMENU, MenuDeleter>;
using MemoryDc = UniqueHandle<HDC, MemoryDcDeleter>;

// The device context of the screen or a window, for measuring.
class WindowDc {
 public:
  explicit WindowDc(HWND hwnd) : hwnd_(hwnd), dc_(::GetDC(hwnd)) {}
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  ~WindowDc() { ::ReleaseDC(hwnd_, dc_); }
  HDC get() const { return dc_; }

 private:
  HWND hwnd_;
  HDC dc_;
};

// Selects an object into a device context for the duration of a scope.
class ScopedSelection {
 public:
  ScopedSelection(HDC dc, HGDIOBJ object) : dc_(dc), former_(::SelectObject(dc, object)) {}
  ScopedSelection(const ScopedSelection&) = delete;
  ScopedSelection& operator=(const ScopedSelection&) = delete;
  ~ScopedSelection() { ::SelectObject(dc_, former_); }

 private:
  HDC dc_;
  HGDIOBJ former_;
};

}  // namespace toolkit
