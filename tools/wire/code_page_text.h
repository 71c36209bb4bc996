// Text between the UTF-8 of terminals and files and the code page of a segment.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace wire {

// 1252, or the system's own on Windows.
int DefaultCodePage();

// The code page of all that follows, and on Linux of the letters that core knows as well. Throws std::invalid_argument
// for one that this system does not know, or that is no ANSI code page.
void UseCodePage(int number);

// Throws std::invalid_argument when the text is not UTF-8, or holds a character that the code page lacks: the message
// names it.
std::string ToCodePage(std::string_view utf8);

// Bytes that are no letters come out as U+FFFD.
std::string ToUtf8(std::string_view bytes);

}  // namespace wire
