// The sounds on offer for a new message.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace options {

struct Sound {
  std::string key;   // as it is stored and played: "(S)", "(B)", or a file name that ends in ".wav"
  std::string text;  // as it is listed; empty for silence and beep
  friend bool operator==(const Sound&, const Sound&) = default;
};

// Silence and beep, whose texts depend on the language, then the wave files of the program's folder.
std::vector<Sound> SoundsOf(const std::vector<std::string>& files);

// The key of a file: its name, with ".wav" appended unless it ends in exactly that; case counts.
std::string SoundKey(std::string_view file);

}  // namespace options
