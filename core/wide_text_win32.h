// Unicode text for drawing and measuring: the ANSI functions decode bytes by the font's character set, which may differ
// from the system's code page.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace core {

// Decodes text of the system's code page. No character has more UTF-16 units than bytes.
inline std::wstring Wide(std::string_view text) {
  std::wstring wide(text.size(), L'\0');
  const int bytes = static_cast<int>(text.size());
  wide.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, wide.data(), bytes)));
  return wide;
}

}  // namespace core
