// A window's timer that ticks as fast as the platform can while something happens, and rests when nothing does. A
// thread that wakes a hundred times a second for nothing costs more than everything else that an idle program does;
// four times a second costs next to nothing, and still catches what nobody announced.
#pragma once

#include <windows.h>

namespace toolkit {

class RestingTimer {
 public:
  static constexpr UINT kFast = 1;       // milliseconds; Windows makes it 10 or more
  static constexpr UINT kResting = 250;  // milliseconds
  static constexpr int kFastTicks = 20;  // how long it stays awake

  // Ticks arrive as WM_TIMER with this id.
  void Start(HWND window, UINT_PTR id) {
    window_ = window;
    id_ = id;
    SetInterval(kFast);
  }

  // Something has happened that the next ticks may have to answer. Cheap enough for every message.
  void Wake() {
    ticksLeft_ = kFastTicks;
    if (interval_ == kResting) SetInterval(kFast);
  }

  // For the handler of every tick.
  void Ticked() {
    if (interval_ == kFast && --ticksLeft_ <= 0) SetInterval(kResting);
  }

 private:
  void SetInterval(UINT interval) {
    interval_ = interval;
    ::SetTimer(window_, id_, interval, nullptr);
  }

  HWND window_ = nullptr;
  UINT_PTR id_ = 0;
  UINT interval_ = 0;
  int ticksLeft_ = kFastTicks;
};

}  // namespace toolkit
