// The desktop as tests see it: it answers from plain fields and remembers what the program did to it.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/box_queue.h"
#include "core/message_box.h"

namespace support {

struct RecordingDesktop {
  // What the program is told.
  std::string clock = "15/11/2026 18:46:02", time = "18:46:02";
  std::string logonName = "anna";
  std::string fileTitle = "Quillon";
  bool anotherCopyRuns = false;
  bool answer = true;                           // to every question
  std::int32_t ticks = 0;                       // grows by the time of every WaitForEvent
  std::function<void()> onPending;              // what every RunPendingEvents does
  std::function<void(const core::Box&)> onBox;  // while a box is on the screen

  // What it did, in order: "box TEXT", "question TEXT", "beep", "sound KEY", "pending", "run COMMAND", "no run",
  // "end"; a recording program adds its own.
  std::vector<std::string> events;
  std::vector<core::Box> boxes;   // shown
  std::vector<core::Box> posted;  // every one that was posted, shown or not
  core::BoxQueue queue;
};

RecordingDesktop& Desktop();

// A new recorder, and every setting and global state as at the start of a process; the language table stays.
void ResetDesktop();

void Record(std::string event);

}  // namespace support
