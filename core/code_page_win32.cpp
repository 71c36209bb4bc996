#include <windows.h>

#include <algorithm>
#include <numeric>
#include <string>

#include "core/code_page.h"

namespace core {
namespace {

constexpr int kLowestSecond = 0x40;

std::string BytesOf(Character letter) {
  const char bytes[] = {static_cast<char>(letter >> 8), static_cast<char>(letter)};
  return letter > 0xFF ? std::string(bytes, 2) : std::string(1, bytes[1]);
}

Character NumberOf(const std::string& letter) {
  return static_cast<Character>(letter.size() == 1 ? ByteOf(letter[0]) : ByteOf(letter[0]) << 8 | ByteOf(letter[1]));
}

// Windows maps invalid bytes to a question mark or the like, which would make different names equal.
bool IsLetter(const std::string& bytes) {
  wchar_t wide[2];
  return ::MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()), wide, 2) ==
         1;
}

// Queried one character at a time: an invalid byte in a text from the network would shift the characters after it. A
// character whose lower-case form is not in the code page (a Roman numeral) becomes a question mark in Windows; it is
// left unchanged.
Character QueryLower(const std::string& letter) {
  std::string lower = letter;
  ::CharLowerBuffA(lower.data(), static_cast<DWORD>(lower.size()));
  return NumberOf(IsLetter(lower) && lower[0] != '?' ? lower : letter);
}

void QueryPairs(CodePage& page) {
  page.lowerDoubleByte.resize(0x10000);
  std::iota(page.lowerDoubleByte.begin(), page.lowerDoubleByte.end(), Character{0});
  for (int number = 0x8000; number < 0x10000; ++number) {
    const auto letter = static_cast<Character>(number);
    if (!page.first[letter >> 8] || (letter & 0xFF) < kLowestSecond || !IsLetter(BytesOf(letter))) continue;
    page.second[letter & 0xFF] = true;
    page.lowerDoubleByte[letter] = QueryLower(BytesOf(letter));
  }
}

CodePage QuerySystem() {
  CodePage page;
  for (int number = 0; number <= 0xFF; ++number) {
    const auto letter = static_cast<Character>(number);
    page.first[letter] = ::IsDBCSLeadByte(static_cast<BYTE>(letter)) != FALSE;
    const bool known = !page.first[letter] && IsLetter(BytesOf(letter));
    page.lower[letter] = static_cast<std::uint8_t>(known ? QueryLower(BytesOf(letter)) : letter);
  }
  if (std::ranges::find(page.first, true) != page.first.end()) QueryPairs(page);
  return page;
}

}  // namespace

const CodePage& SystemCodePage() {
  static const CodePage page = QuerySystem();
  return page;
}

std::wstring Wide(std::string_view text) {
  std::wstring wide(text.size(), L'\0');
  const int bytes = static_cast<int>(text.size());
  wide.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, text.data(), bytes, wide.data(), bytes)));
  return wide;
}

}  // namespace core
