// Message boxes, shown at once or posted to the message loop.
#pragma once

#include <cstddef>
#include <string>

#include "core/process.h"

namespace core {

enum class BoxIcon { None, Information, Exclamation, Critical };

struct Box {
  std::string text;
  std::string closing = {};  // appended to the text, and kept when the text has to be truncated
  std::string title = kProgramName;
  BoxIcon icon = BoxIcon::None;
};

// Shows a box with an OK button and waits, for responses to the user's own action. Task-modal and topmost; messages,
// packets and timers are still handled. If no window can be created, the box is posted.
void ShowBox(const Box& box);

// Asks a Yes/No question; true for Yes, false for No or if no window can be created.
bool AskBox(const Box& box);

// Queues a box for the message loop, for everything that packets or a failing log cause. The loop shows one box at a
// time, so that a flood can neither exhaust the stack nor cover the screen; beyond kMaxWaitingBoxes they are dropped.
inline constexpr std::size_t kMaxWaitingBoxes = 100;
void PostBox(Box box);

// Shows the queued boxes. Called by the message loop; does nothing while one is open. If no window can be created, the
// box stays queued and is retried every second, because it may contain the only copy of a message.
void ShowPostedBoxes();

}  // namespace core
