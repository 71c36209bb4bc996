#include "ui/conversation/clipboard.h"

#include <cstring>
#include <utility>

#include "core/code_page.h"
#include "core/runtime_error.h"
#include "ui/toolkit/handles.h"

namespace conversation {
namespace {

class OpenedClipboard {
 public:
  explicit OpenedClipboard(HWND owner) {
    if (!::OpenClipboard(owner)) throw core::RuntimeError(core::Err::ClipboardBusy);
  }
  OpenedClipboard(const OpenedClipboard&) = delete;
  OpenedClipboard& operator=(const OpenedClipboard&) = delete;
  ~OpenedClipboard() { ::CloseClipboard(); }
};

struct MemoryDeleter {
  static void Free(HGLOBAL memory) { ::GlobalFree(memory); }
};
using Memory = toolkit::UniqueHandle<HGLOBAL, MemoryDeleter>;

Memory CopyOf(const void* bytes, std::size_t size) {
  Memory memory(::GlobalAlloc(GMEM_MOVEABLE, size));
  if (!memory) throw core::RuntimeError(core::Err::OutOfMemory);
  std::memcpy(::GlobalLock(memory.get()), bytes, size);
  ::GlobalUnlock(memory.get());
  return memory;
}

// The clipboard owns the memory afterwards.
void Put(UINT format, Memory memory) {
  if (!::SetClipboardData(format, memory.get())) throw core::RuntimeError(core::Err::ClipboardBusy);
  memory.release();
}

Memory UnicodeOf(const std::string& text) {
  const std::wstring unicode = core::Wide(text.c_str());
  return CopyOf(unicode.c_str(), (unicode.size() + 1) * sizeof(wchar_t));
}

}  // namespace

// As Unicode, because CF_TEXT would be tagged with the keyboard's language, whose code page may differ from the
// system's. The locale is for programs that request CF_TEXT.
void CopyText(HWND owner, const std::string& text) {
  const OpenedClipboard clipboard(owner);
  Memory unicode = UnicodeOf(text);
  const LCID system = ::GetSystemDefaultLCID();
  ::EmptyClipboard();
  Put(CF_UNICODETEXT, std::move(unicode));
  Put(CF_LOCALE, CopyOf(&system, sizeof system));
}

}  // namespace conversation
