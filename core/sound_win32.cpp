#include "core/sound.h"

#include <windows.h>
#include <mmsystem.h>

#include "core/files.h"
#include "core/system_library_win32.h"

namespace core {
namespace {

using SoundPlayer = BOOL(WINAPI*)(LPCSTR, UINT);

// Loaded with the first wave file: the multimedia library takes over a megabyte and a tenth of the start-up time, and
// the default sound is the system beep.
SoundPlayer LoadSoundPlayer() {
  const HMODULE library = LoadSystemLibrary("winmm.dll");
  if (library == nullptr) return nullptr;
  return reinterpret_cast<SoundPlayer>(reinterpret_cast<void (*)()>(::GetProcAddress(library, "sndPlaySoundA")));
}

}  // namespace

void Beep() { ::MessageBeep(MB_OK); }

void PlaySnd(const std::string& waveFile) {
  static const SoundPlayer play = LoadSoundPlayer();
  if (play != nullptr) play(waveFile.c_str(), SND_ASYNC | SND_NODEFAULT);
}

void PlayAlertSound(const std::string& key) {
  if (key == "(S)") return;
  if (key == "(B)") {
    Beep();
  } else {
    PlaySnd(InProgramDirectory(key));
  }
}

}  // namespace core
