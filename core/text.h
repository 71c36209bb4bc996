// Operations on ANSI text. From the wire to the control, text is bytes in the system's code page, whose characters have
// one or two bytes (core/code_page.h).
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace core {

// Removes blanks (0x20 only) at both ends: tabs and line ends are content.
std::string_view Trim(std::string_view text);

// By the code page, so that accented letters are folded too. Invalid bytes are unchanged.
std::string LowerCase(std::string_view text);
bool EqualIgnoringCase(std::string_view a, std::string_view b);

// The upper-case form of a character; the character itself when there is none.
std::string UpperCase(std::string_view character);

// The first character of a text; empty for an empty text.
std::string_view FirstCharacter(std::string_view text);

// As many whole characters from the beginning of a text as fit into this many bytes.
std::string_view LeadingCharacters(std::string_view text, std::size_t bytes);

// The position of an ASCII text in another one, npos if not found. Trail bytes do not match: a "|" that is one is not a
// bar. `start` must be the beginning of a character.
std::size_t Find(std::string_view text, std::string_view ascii, std::size_t start = 0);
std::size_t FindLast(std::string_view text, std::string_view ascii);

// Removes the first line of the text, which CR LF, CR, LF or the end of the text ends. Returns it without its end.
std::string_view TakeLine(std::string_view& text);

// Splits at vertical bars. An empty last field is dropped: "F|anna|bob" and "F|anna|bob|" both have three. An empty
// text has none.
std::vector<std::string_view> BarFields(std::string_view text);

// The field with this index, from 0; empty when there are fewer.
std::string_view BarField(std::string_view text, std::size_t index);

// Case-insensitive hash and comparison of names. They fold one character at a time, so a lookup allocates nothing, and
// they are transparent: a container of strings can be searched with a view. The hash is seeded per run, so that nobody
// can prepare names that collide.
struct NameHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view name) const;
};

struct NameEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return EqualIgnoringCase(a, b); }
};

}  // namespace core
