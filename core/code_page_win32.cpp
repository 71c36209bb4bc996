#include <windows.h>

#include <algorithm>
#include <numeric>
#include <string>

#include "core/code_page.h"

namespace core {
namespace {

constexpr int kLowestTrail = 0x40;

std::string BytesOf(Character character) {
  const char bytes[] = {static_cast<char>(character >> 8), static_cast<char>(character)};
  return character > 0xFF ? std::string(bytes, 2) : std::string(1, bytes[1]);
}

Character NumberOf(const std::string& character) {
  return static_cast<Character>(character.size() == 1 ? ByteOf(character[0])
                                                      : ByteOf(character[0]) << 8 | ByteOf(character[1]));
}

// Windows maps invalid bytes to a question mark or the like, which would make different names equal.
bool IsCharacter(const std::string& bytes) {
  wchar_t wide[2];
  return ::MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()), wide, 2) ==
         1;
}

// Queried one character at a time: an invalid byte in a text from the network would shift the characters after it. A
// character whose lower-case form is not in the code page (a Roman numeral) becomes a question mark in Windows; it is
// left unchanged.
Character QueryLower(const std::string& character) {
  std::string lower = character;
  ::CharLowerBuffA(lower.data(), static_cast<DWORD>(lower.size()));
  return NumberOf(IsCharacter(lower) && lower[0] != '?' ? lower : character);
}

void QueryDoubleByte(CodePage& page) {
  page.lowerDoubleByte.resize(0x10000);
  std::iota(page.lowerDoubleByte.begin(), page.lowerDoubleByte.end(), Character{0});
  for (int number = 0x8000; number < 0x10000; ++number) {
    const auto character = static_cast<Character>(number);
    if (!page.isLead[character >> 8] || (character & 0xFF) < kLowestTrail || !IsCharacter(BytesOf(character))) continue;
    page.isTrail[character & 0xFF] = true;
    page.lowerDoubleByte[character] = QueryLower(BytesOf(character));
  }
}

CodePage QuerySystem() {
  CodePage page;
  for (int number = 0; number <= 0xFF; ++number) {
    const auto character = static_cast<Character>(number);
    page.isLead[character] = ::IsDBCSLeadByte(static_cast<BYTE>(character)) != FALSE;
    const bool known = !page.isLead[character] && IsCharacter(BytesOf(character));
    page.lower[character] = static_cast<std::uint8_t>(known ? QueryLower(BytesOf(character)) : character);
  }
  if (std::ranges::find(page.isLead, true) != page.isLead.end()) QueryDoubleByte(page);
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
