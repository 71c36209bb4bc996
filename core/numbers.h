// Conversions between text and numbers, in the formats of packets and files.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace core {

// Never fails. Accepts an optional sign, digits with one ".", an optional exponent (e, E, d, D), or "&H" or "&O" and
// its digits; skips blanks, tabs and line feeds everywhere, even between digits. Stops at the first other character; 0
// when there is no number.
double TolerantNumber(std::string_view text);

// The whole text must be one number; blanks around it are allowed. Throws Err::TypeMismatch otherwise, also for an
// empty text.
double StrictNumber(std::string_view text);

// Rounds half to even. Throws Err::Overflow when the result does not fit.
std::int16_t ToInt16(double value);
std::int32_t ToInt32(double value);

// With a blank in place of the sign when the number is not negative ("C/ 255", "C/-5").
std::string GeneralText(std::int32_t value);

}  // namespace core
