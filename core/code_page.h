// The letters of the system's ANSI code page: the one place that knows that a letter may have two bytes, and what its
// lower-case form is.
//
// On Japanese, Chinese and Korean systems (code pages 932, 936, 949 and 950) the second byte of a letter may be "|",
// "\" or a Latin letter as well as a byte above 127, so these are looked for with the functions of core/text.h. It is
// never below 0x40: blanks, line ends, quotes, commas, points, digits and "&" are looked for byte by byte everywhere.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace core {

// A letter as a number: its byte, or its first byte * 256 + its second one.
using Letter = std::uint16_t;

inline std::uint8_t ByteOf(char c) { return static_cast<std::uint8_t>(c); }

struct CodePage {
  std::array<std::uint8_t, 256> lower{};    // of the letters of one byte
  std::array<bool, 256> first{}, second{};  // the bytes that begin, and that end, a letter of two
  std::vector<Letter> lowerPairs;           // of the letters of two bytes, by their numbers; empty when there are none

  // False on most systems: bytes are letters then, and there is a quicker way to do most things.
  bool HasPairs() const { return !lowerPairs.empty(); }

  // Bytes of the letter that a text, not empty, begins with. A first byte without a second one is a letter by itself.
  std::size_t LetterSize(std::string_view text) const {
    return text.size() > 1 && first[ByteOf(text[0])] && second[ByteOf(text[1])] ? 2 : 1;
  }

  Letter Lower(Letter letter) const { return letter > 0xFF ? lowerPairs[letter] : lower[letter]; }

  // Takes the first letter off a text that is not empty; returns its lower-case form, which has as many bytes.
  Letter TakeLower(std::string_view& text) const {
    const std::size_t size = LetterSize(text);
    const int number = size == 1 ? ByteOf(text[0]) : ByteOf(text[0]) << 8 | ByteOf(text[1]);
    text.remove_prefix(size);
    return Lower(static_cast<Letter>(number));
  }
};

// Asked from Windows once. Native builds know five code pages (core/code_page_native.h).
const CodePage& SystemCodePage();

}  // namespace core
