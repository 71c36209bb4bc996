// A fake desktop for tests: it answers from plain fields and records what the program does.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/message_box.h"

namespace support {

struct RecordingDesktop {
  // Answers.
  std::string clock = "15/11/2026 18:46:02", time = "18:46:02";
  std::string logonName = "anna";
  std::string fileTitle = "Quillon";
  bool anotherCopyRuns = false;
  bool answer = true;                           // to every question
  std::int32_t ticks = 0;                       // advanced by WaitForEvent
  std::function<void()> onPending;              // called by RunPendingEvents
  std::function<void(const core::Box&)> onBox;  // while a box is on the screen

  // What it did, in order: "box TEXT", "question TEXT", "beep", "sound KEY", "pending", "run COMMAND", "no run",
  // "end"; a recording program adds its own.
  std::vector<std::string> events;
  std::vector<core::Box> boxes;   // shown
  std::vector<core::Box> posted;  // all posted ones, shown or not
  core::BoxQueue queue;
};

RecordingDesktop& Desktop();

// Resets the recorder and all settings and global state to those of a fresh process, except the language table.
void ResetDesktop();

void Record(std::string event);

}  // namespace support
