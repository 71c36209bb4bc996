// The sounds of a new message that the user can choose from.
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

// Silence and beep, whose texts follow the language, then the wave files of the program's folder.
std::vector<Sound> SoundsOf(const std::vector<std::string>& files);

// The key of a file: its name, with ".wav" behind it unless it ends so, in exactly this case.
std::string SoundKey(std::string_view file);

}  // namespace options
