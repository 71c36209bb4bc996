#include "ui/options/sounds.h"

namespace options {

std::string SoundKey(std::string_view file) {
  std::string key(file);
  if (!file.ends_with(".wav")) key += ".wav";
  return key;
}

std::vector<Sound> SoundsOf(std::string_view silence, std::string_view beep, const std::vector<std::string>& files) {
  std::vector<Sound> sounds{{"(S)", std::string(silence)}, {"(B)", std::string(beep)}};
  for (const std::string& file : files) sounds.push_back({SoundKey(file), file});
  return sounds;
}

}  // namespace options
