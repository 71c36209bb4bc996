#include <windows.h>

#include "tools/wire/code_page_text.h"

namespace wire {
namespace {

UINT gCodePage = ::GetACP();

std::wstring Wide(UINT codePage, DWORD flags, std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  const int length = ::MultiByteToWideChar(codePage, flags, text.data(), size, wide.data(), size);
  wide.resize(static_cast<std::size_t>(length));
  return wide;
}

std::string Narrow(UINT codePage, DWORD flags, std::wstring_view wide, BOOL* lacking) {
  std::string text(wide.size() * 3, '\0');
  const int length = ::WideCharToMultiByte(codePage, flags, wide.data(), static_cast<int>(wide.size()), text.data(),
                                           static_cast<int>(text.size()), nullptr, lacking);
  text.resize(static_cast<std::size_t>(length));
  return text;
}

std::string ToUtf8(std::wstring_view wide) { return Narrow(CP_UTF8, 0, wide, nullptr); }

bool Lacks(std::wstring_view wide) {
  BOOL lacking = FALSE;
  Narrow(gCodePage, WC_NO_BEST_FIT_CHARS, wide, &lacking);
  return lacking != FALSE;
}

// The first character that the code page lacks, of a text that contains one; a whole surrogate pair.
std::wstring_view FirstLacking(std::wstring_view wide) {
  while (!Lacks(wide.substr(0, 1))) wide.remove_prefix(1);
  return wide.substr(0, IS_HIGH_SURROGATE(wide[0]) ? 2 : 1);
}

}  // namespace

int DefaultCodePage() { return static_cast<int>(::GetACP()); }

void UseCodePage(int number) {
  CPINFO info;
  const bool known = ::GetCPInfo(static_cast<UINT>(number), &info) != FALSE && info.MaxCharSize <= 2;
  if (number <= CP_THREAD_ACP || !known)
    throw std::invalid_argument(std::to_string(number) + " is not an ANSI code page of this system");
  gCodePage = static_cast<UINT>(number);
}

std::string ToCodePage(std::string_view utf8) {
  if (utf8.empty()) return {};
  const std::wstring wide = Wide(CP_UTF8, MB_ERR_INVALID_CHARS, utf8);
  if (wide.empty()) throw std::invalid_argument("the text is not UTF-8");
  BOOL lacking = FALSE;
  const std::string bytes = Narrow(gCodePage, WC_NO_BEST_FIT_CHARS, wide, &lacking);
  if (!lacking) return bytes;
  throw std::invalid_argument("code page " + std::to_string(gCodePage) + " has no \"" + ToUtf8(FirstLacking(wide)) +
                              "\"");
}

std::string ToUtf8(std::string_view bytes) { return ToUtf8(Wide(gCodePage, 0, bytes)); }

}  // namespace wire
