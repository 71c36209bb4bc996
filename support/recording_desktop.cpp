#include "support/recording_desktop.h"

#include <array>
#include <string>
#include <utility>

#include "core/clock.h"
#include "core/event_loop.h"
#include "core/globals.h"
#include "core/process.h"
#include "core/settings.h"
#include "core/sound.h"

namespace support {
namespace {

RecordingDesktop gDesktop;

// The English ones, copied before main().
const std::array<std::string, 3> kStateNames = core::gStateNames, kStateHelps = core::gStateHelps;

}  // namespace

RecordingDesktop& Desktop() { return gDesktop; }

void ResetDesktop() {
  gDesktop = {};
  core::ResetSettings();
  core::gVersion.clear();
  core::gSafe = core::gStarting = core::gStatus = 0;
  core::gDispatching = false;
  core::gCurName.clear();
  core::gLangError = 0;
  core::gTicks = 0;
  core::gStateNames = kStateNames;
  core::gStateHelps = kStateHelps;
}

void Record(std::string event) { gDesktop.events.push_back(std::move(event)); }

}  // namespace support

namespace core {

using support::Desktop;
using support::Record;

void ShowBox(const Box& box) {
  Record("box " + box.text);
  Desktop().boxes.push_back(box);
  if (Desktop().onBox) Desktop().onBox(box);
}

bool AskBox(const Box& box) {
  Record("question " + box.text);
  Desktop().boxes.push_back(box);
  return Desktop().answer;
}

void PostBox(Box box) {
  Desktop().posted.push_back(box);
  Desktop().queue.Post(std::move(box));
}

void ShowPostedBoxes() {
  Desktop().queue.ShowAll([](const Box& box) { return ShowBox(box), true; });
}

void Beep() { Record("beep"); }

void PlayAlertSound(const std::string& key) { Record("sound " + key); }

std::string ClockText() { return Desktop().clock; }

std::string TimeText() { return Desktop().time; }

std::string GetLogonName() { return Desktop().logonName; }

bool AnotherCopyRuns() { return Desktop().anotherCopyRuns; }

std::int32_t TickCount() { return Desktop().ticks; }

void RunPendingEvents() {
  Record("pending");
  if (Desktop().onPending) Desktop().onPending();
}

void WaitForEvent(std::int32_t milliseconds) {
  const auto later = static_cast<std::uint32_t>(Desktop().ticks) + static_cast<std::uint32_t>(milliseconds);
  Desktop().ticks = static_cast<std::int32_t>(later);
}

void WriteRunValue(const std::string& command) { Record("run " + command); }

void DeleteRunValue() { Record("no run"); }

std::string ProgramFileTitle() { return Desktop().fileTitle; }

void EndProcess() { Record("end"); }

}  // namespace core
