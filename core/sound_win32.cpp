#include "core/sound_win32.h"

#include <windows.h>
#include <mmsystem.h>

namespace core {
namespace {

using SoundPlayer = BOOL(WINAPI*)(LPCSTR, UINT);

// The multimedia library costs more than a megabyte and a tenth of the start, and most users hear the system beep all
// their life: it is loaded with the first wave. By its full path, so that no file beside the program can take its
// place.
SoundPlayer LoadSoundPlayer() {
  char folder[MAX_PATH];
  const UINT length = ::GetSystemDirectoryA(folder, MAX_PATH);
  const HMODULE library = ::LoadLibraryA(std::string(folder, length).append("\\winmm.dll").c_str());
  if (library == nullptr) return nullptr;
  return reinterpret_cast<SoundPlayer>(reinterpret_cast<void (*)()>(::GetProcAddress(library, "sndPlaySoundA")));
}

}  // namespace

void PlaySnd(const std::string& waveFile) {
  static const SoundPlayer play = LoadSoundPlayer();
  if (play != nullptr) play(waveFile.c_str(), SND_ASYNC | SND_NODEFAULT);
}

}  // namespace core
