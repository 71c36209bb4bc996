// Message boxes: at once, or posted for the top of the message loop.
#pragma once

#include <cstddef>
#include <string>

#include "core/process.h"

namespace core {

enum class BoxIcon { None, Information, Exclamation, Critical };

struct Box {
  std::string text;
  std::string closing = {};  // stands behind the text, also when the text is too long for the screen and has to be cut
  std::string title = kProgramName;
  BoxIcon icon = BoxIcon::None;
};

// A box with an OK button, at once: for what answers the user's own action. Task-modal, above all windows; messages,
// packets and timers go on behind it.
void ShowBox(const Box& box);

// A Yes/No question, at once; true for Yes.
bool AskBox(const Box& box);

// A box that a packet or a failing log causes: waits its turn for the top of the message loop. One at a time, in order,
// at most kMaxWaitingBoxes waiting and later ones dropped, so that a flood can neither nest boxes until the stack ends
// nor bury the screen.
inline constexpr std::size_t kMaxWaitingBoxes = 100;
void PostBox(Box box);

// Shows the boxes that wait. Called at the top of the message loop; does nothing while one is already on the screen.
void ShowPostedBoxes();

}  // namespace core
