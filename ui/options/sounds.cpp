#include "ui/options/sounds.h"

namespace options {

std::string SoundKey(std::string_view file) {
  std::string key(file);
  if (!file.ends_with(".wav")) key += ".wav";
  return key;
}

std::vector<Sound> SoundsOf(const std::vector<std::string>& files) {
  std::vector<Sound> sounds{{"(S)", ""}, {"(B)", ""}};
  for (const std::string& file : files) sounds.push_back({SoundKey(file), file});
  return sounds;
}

}  // namespace options
