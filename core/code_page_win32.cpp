#include <windows.h>

#include <algorithm>
#include <numeric>
#include <string>

#include "core/code_page.h"

namespace core {
namespace {

constexpr int kLowestSecond = 0x40;

std::string BytesOf(Letter letter) {
  const char bytes[] = {static_cast<char>(letter >> 8), static_cast<char>(letter)};
  return letter > 0xFF ? std::string(bytes, 2) : std::string(1, bytes[1]);
}

Letter NumberOf(const std::string& letter) {
  return static_cast<Letter>(letter.size() == 1 ? ByteOf(letter[0]) : ByteOf(letter[0]) << 8 | ByteOf(letter[1]));
}

// Windows turns what is no letter of the code page into a question mark or the like, which would make many names one.
bool IsLetter(const std::string& bytes) {
  wchar_t wide[2];
  return ::MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, bytes.data(), static_cast<int>(bytes.size()), wide, 2) ==
         1;
}

// As CharLowerBuffA gives it for whole texts. Asked for each letter by itself: bytes from the network need not be
// letters, and would move those behind them. Nor does every code page have the small form of each of its letters
// (Roman numbers): then Windows answers with a question mark, and the letter stays as it is.
Letter AskLower(const std::string& letter) {
  std::string lower = letter;
  ::CharLowerBuffA(lower.data(), static_cast<DWORD>(lower.size()));
  return NumberOf(IsLetter(lower) && lower[0] != '?' ? lower : letter);
}

void AskPairs(CodePage& page) {
  page.lowerPairs.resize(0x10000);
  std::iota(page.lowerPairs.begin(), page.lowerPairs.end(), Letter{0});
  for (int number = 0x8000; number < 0x10000; ++number) {
    const auto letter = static_cast<Letter>(number);
    if (!page.first[letter >> 8] || (letter & 0xFF) < kLowestSecond || !IsLetter(BytesOf(letter))) continue;
    page.second[letter & 0xFF] = true;
    page.lowerPairs[letter] = AskLower(BytesOf(letter));
  }
}

CodePage AskSystem() {
  CodePage page;
  for (int number = 0; number <= 0xFF; ++number) {
    const auto letter = static_cast<Letter>(number);
    page.first[letter] = ::IsDBCSLeadByte(static_cast<BYTE>(letter)) != FALSE;
    const bool known = !page.first[letter] && IsLetter(BytesOf(letter));
    page.lower[letter] = static_cast<std::uint8_t>(known ? AskLower(BytesOf(letter)) : letter);
  }
  if (std::ranges::find(page.first, true) != page.first.end()) AskPairs(page);
  return page;
}

}  // namespace

const CodePage& SystemCodePage() {
  static const CodePage page = AskSystem();
  return page;
}

}  // namespace core
