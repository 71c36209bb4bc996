#include "ui/conversation/clipboard.h"

#include <cstring>

#include "core/runtime_error.h"

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

HGLOBAL GlobalCopy(const std::string& text) {
  const std::size_t size = text.size() + 1;
  const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, size);
  if (!memory) throw core::RuntimeError(core::Err::OutOfMemory);
  std::memcpy(::GlobalLock(memory), text.c_str(), size);
  ::GlobalUnlock(memory);
  return memory;
}

}  // namespace

void CopyText(HWND owner, const std::string& text) {
  const OpenedClipboard clipboard(owner);
  const HGLOBAL memory = GlobalCopy(text);
  ::EmptyClipboard();
  if (!::SetClipboardData(CF_TEXT, memory)) ::GlobalFree(memory);
}

}  // namespace conversation
