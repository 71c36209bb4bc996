// Characters of the system's ANSI code page, and the conversion of its texts to UTF-16. Only this file knows that a
// character may have two bytes (double-byte), and what its lower-case form is.
//
// On Japanese, Chinese and Korean systems (code pages 932, 936, 949 and 950) the trail byte of a character may be "|",
// "\" or a Latin letter, so search for these with the functions of core/text.h. Trail bytes are never below 0x40:
// blanks, line ends, quotes, commas, points, digits and "&" can be searched for byte by byte.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace core {

// A character as a number: its byte, or lead byte * 256 + trail byte.
using Character = std::uint16_t;

inline std::uint8_t ByteOf(char c) { return static_cast<std::uint8_t>(c); }

struct CodePage {
  std::array<std::uint8_t, 256> lower{};  // lower-case forms of the single-byte characters
  std::array<bool, 256> isLead{}, isTrail{};
  std::vector<Character> lowerDoubleByte;  // lower-case forms of the double-byte characters; empty when there are none

  // False on most systems, where every byte is a character and most operations have a fast path.
  bool IsDoubleByte() const { return !lowerDoubleByte.empty(); }

  // Size in bytes of the first character of a text that is not empty. A lead byte without a trail byte is a character.
  std::size_t CharacterSize(std::string_view text) const {
    return text.size() > 1 && isLead[ByteOf(text[0])] && isTrail[ByteOf(text[1])] ? 2 : 1;
  }

  Character Lower(Character character) const {
    return character > 0xFF ? lowerDoubleByte[character] : lower[character];
  }

  // Removes the first character of a text that is not empty; returns its lower-case form, which has the same size.
  Character TakeLower(std::string_view& text) const {
    const std::size_t size = CharacterSize(text);
    const int number = size == 1 ? ByteOf(text[0]) : ByteOf(text[0]) << 8 | ByteOf(text[1]);
    text.remove_prefix(size);
    return Lower(static_cast<Character>(number));
  }
};

// Queried from Windows once. Native builds have data for five code pages.
const CodePage& SystemCodePage();

// In Windows builds only. A text as UTF-16, for drawing and measuring: the ANSI functions decode bytes by the font's
// character set, which may differ from the system's code page. No character has more UTF-16 units than bytes.
std::wstring Wide(std::string_view text);

// In native builds only. Selects 932, 936, 949, 950 or 1252, the default. Throws std::invalid_argument for any other.
void SetSystemCodePage(int number);

// In native builds only. Selects a code page that the caller provides.
void SetSystemCodePage(CodePage page);

}  // namespace core
