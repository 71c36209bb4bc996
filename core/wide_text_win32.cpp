#include "core/wide_text_win32.h"

#include <windows.h>

namespace core {

// No letter has more units of Unicode than bytes.
std::wstring Wide(std::string_view text) {
  std::wstring wide(text.size(), L'\0');
  const int bytes = static_cast<int>(text.size());
  wide.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, wide.data(), bytes)));
  return wide;
}

}  // namespace core
