// Text for the calls of Windows that take Unicode: those that draw or measure bytes read them by the script of the
// font, which need not be that of the system's code page.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace core {

// No letter has more units of Unicode than bytes.
inline std::wstring Wide(std::string_view text) {
  std::wstring wide(text.size(), L'\0');
  const int bytes = static_cast<int>(text.size());
  wide.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, wide.data(), bytes)));
  return wide;
}

}  // namespace core
