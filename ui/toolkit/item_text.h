// The text of an item of a list or a tree, whole, whatever its length: a name that is heard may fill a datagram. Such
// controls copy as much as fits and do not tell how much there is.
#pragma once

#include <cstring>
#include <string>

namespace toolkit {

// `copy(buffer, size)` lets the control copy the text, its closing zero counted.
template <class Copy>
std::string ItemText(Copy copy) {
  constexpr std::size_t usual = 256;
  for (std::size_t size = usual;; size *= 2) {
    std::string text(size, '\0');
    copy(text.data(), static_cast<int>(size));
    text.resize(std::strlen(text.c_str()));   // a text that does not fit need not be ended
    if (text.size() + 2 < size) return text;  // there was room for another letter, of two bytes perhaps
  }
}

}  // namespace toolkit
