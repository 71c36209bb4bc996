// Text to number and back, in the forms that packets and files use.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace core {

// Never fails. Blanks, tabs and line feeds are skipped everywhere, also between digits; then an optional sign, digits
// with one ".", an optional exponent (e, E, d, D), or "&H"/"&O" and its digits. Reading stops at the first other
// character; nothing readable is 0.
double TolerantNumber(std::string_view text);

// The whole text must be one number (blanks around it allowed). Throws Err::TypeMismatch for anything else, the empty
// text included.
double StrictNumber(std::string_view text);

// Rounds half to even. Throws Err::Overflow when the result does not fit.
std::int16_t ToInt16(double value);
std::int32_t ToInt32(double value);

// The general form: a blank stands where a minus sign would ("C/ 255", "C/-5").
std::string GeneralText(std::int32_t value);

}  // namespace core
