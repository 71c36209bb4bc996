// Converts text between UTF-8, for terminals and files, and the code page of a segment.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace wire {

// 1252, or the system's own on Windows.
int DefaultCodePage();

// Sets the code page of all conversions, and on Linux that of core's text functions too. Throws std::invalid_argument
// if the system does not support it, or if it is not an ANSI code page.
void UseCodePage(int number);

// Throws std::invalid_argument when the text is not UTF-8, or contains a character that the code page lacks, which the
// message names.
std::string ToCodePage(std::string_view utf8);

// Invalid bytes become U+FFFD.
std::string ToUtf8(std::string_view bytes);

}  // namespace wire
