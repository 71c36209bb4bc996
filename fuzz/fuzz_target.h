// The interface of a fuzz target, for both drivers: libFuzzer and the replay of the corpus.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "core/code_page.h"
#include "core/text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Aborts when an invariant is violated.
inline void Require(bool invariant) {
  if (!invariant) std::abort();
}

// Removes the first byte of the text and returns it; 0 when there is none.
inline unsigned char TakeByte(std::string_view& text) {
  if (text.empty()) return 0;
  const auto byte = static_cast<unsigned char>(text.front());
  text.remove_prefix(1);
  return byte;
}

// Removes the first line of the text, with its "\n", and returns it.
inline std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find('\n'));
  text.remove_prefix(line.size() < text.size() ? line.size() + 1 : line.size());
  return line;
}

// Any digit chooses 1252.
inline void ChooseCodePage(unsigned char choice) {
  constexpr int kCodePages[] = {932, 936, 949, 1252, 950};
  core::SetSystemCodePage(kCodePages[choice / 16 % 5]);
}

// The text as an edit control returns it: without lone lead bytes, which would combine with the text after them.
inline std::string Typed(std::string_view text) {
  std::string typed;
  while (!text.empty()) {
    const std::string_view character = core::FirstCharacter(text);
    const bool half = character.size() == 1 && core::SystemCodePage().isLead[core::ByteOf(character[0])];
    typed.append(half ? "?" : character);
    text.remove_prefix(character.size());
  }
  return typed;
}

}  // namespace fuzz
