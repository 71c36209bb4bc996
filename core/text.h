// Small operations on ANSI text. Text is bytes of the system's code page from the wire to the control, and a letter of
// it has one byte or two (core/code_page.h).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace core {

// Without the blanks (0x20 only) at both ends: tabs and line ends are content.
std::string_view Trim(std::string_view text);

// By the code page, so that accented letters fold too. Bytes that are no letters stay as they are.
std::string LowerCase(std::string_view text);
bool EqualIgnoringCase(std::string_view a, std::string_view b);

// The capital of a letter; the letter itself when it has none or is one.
std::string UpperCase(std::string_view letter);

// The letter that a text begins with, empty for the empty text.
std::string_view FirstLetter(std::string_view text);

// As many of a text's first letters as stand in so many bytes.
std::string_view LeadingLetters(std::string_view text, std::size_t bytes);

// Where a text of plain ASCII stands in another, by letters: a "|" that is the second byte of one is none. `start` is
// the beginning of a letter. npos when it does not.
std::size_t Find(std::string_view text, std::string_view ascii, std::size_t start = 0);
std::size_t FindLast(std::string_view text, std::string_view ascii);

// The pieces between vertical bars. An empty last piece does not count, so "F|anna|bob" and "F|anna|bob|" both give
// three; the empty text gives none.
std::vector<std::string_view> BarFields(std::string_view text);

// Piece number index (from 0) between vertical bars, the empty text when there are fewer.
std::string_view BarField(std::string_view text, std::size_t index);

// Hashing and comparing names without regard to case, straight from the bytes: no lower-case copy is made, so a look-up
// costs no allocation. Both are transparent: a container of strings can be searched with a view. The hash differs from
// run to run, so that names cannot be prepared elsewhere to fall into one bucket.
struct NameHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view name) const;
};

struct NameEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return EqualIgnoringCase(a, b); }
};

}  // namespace core
