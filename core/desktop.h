// What the program asks of the desktop around it: boxes, sounds, the clock, the user. One implementation stands on
// Windows (desktop_win32.cpp); tests link a recorder in its place.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace core {

enum class BoxIcon { None, Information, Exclamation, Critical };

inline constexpr char kProgramName[] = "Quillon";

struct Box {
  std::string text;
  std::string title = kProgramName;
  BoxIcon icon = BoxIcon::None;
};

// A box with an OK button, at once: for what answers the user's own action. Task-modal; messages, packets and timers
// go on behind it.
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

void Beep();

// The sound of a new alert: "(S)" nothing, "(B)" the system beep, else that wave file of the program directory,
// played without waiting; a missing file is silent.
void PlayAlertSound(const std::string& key);

// Short date, one blank, long time, in the form the user's locale gives them, trimmed.
std::string ClockText();

// The long time text of the user's locale.
std::string TimeText();

// The name of the logged-on user, empty when the system does not tell it.
std::string LogonName();

// True when another copy already runs for the same user. From the first call on this copy is the one that runs.
bool AnotherCopyRuns();

// Milliseconds since the system started, wrapping as a signed 32-bit number.
std::int32_t TickCount();

// Let pending window events run once: until the queue is empty, but for at most 50 ms, so that the fast timers of the
// program cannot keep it going for ever.
void RunPendingEvents();

// Sleeps until an event arrives or the time (milliseconds) is over.
void WaitForEvent(std::int32_t milliseconds);

// The current user's logon entry under the Run key, value "Quillon". Failures are ignored.
void WriteRunValue(const std::string& command);
void DeleteRunValue();

// The program's file name without its extension.
std::string ProgramFileTitle();

// Ends the process at once: no window hears of it, no destructor runs. Returns only in a test's recorder.
void EndProcess();

}  // namespace core
