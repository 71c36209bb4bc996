// Small operations on ANSI text. Text is bytes of the system's code page from the wire to the control; nothing here
// looks at characters except through the 256-byte table of lower-case forms.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace core {

// Without the blanks (0x20 only) at both ends: tabs and line ends are content.
std::string_view Trim(std::string_view text);

// Every byte through the system's lower-case table (core/ansi_case.h), so that accented letters fold too.
std::string LowerCase(std::string_view text);
bool EqualIgnoringCase(std::string_view a, std::string_view b);

// A-Z only: packet kinds are plain ASCII whatever the code page.
std::string AsciiUpper(std::string_view text);

// The pieces between vertical bars. An empty last piece does not count, so "F|anna|bob" and "F|anna|bob|" both give
// three; the empty text gives none.
std::vector<std::string_view> BarFields(std::string_view text);

// Piece number index (from 0) between vertical bars, the empty text when there are fewer.
std::string_view BarField(std::string_view text, std::size_t index);

}  // namespace core
