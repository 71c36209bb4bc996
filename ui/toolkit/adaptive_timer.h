// A window's timer that ticks at the highest rate while there is activity and slowly otherwise. A hundred wake-ups per
// second would cost more than everything else in an idle program. Four per second cost next to nothing; the slow tick
// picks up changes that did not call Wake().
#pragma once

#include <windows.h>

namespace toolkit {

class AdaptiveTimer {
 public:
  static constexpr UINT kFast = 1;       // milliseconds; Windows makes it 10 or more
  static constexpr UINT kResting = 250;  // milliseconds
  static constexpr int kFastTicks = 20;  // before it slows down

  // Ticks arrive as WM_TIMER with this id.
  void Start(HWND window, UINT_PTR id) {
    window_ = window;
    id_ = id;
    SetInterval(kFast);
  }

  // Call on any activity. Cheap enough for every message.
  void Wake() {
    ticksLeft_ = kFastTicks;
    if (interval_ == kResting) SetInterval(kFast);
  }

  // Call on every tick.
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
