#include "ui/conversation/layout_cost.h"

#include <windows.h>
#include <psapi.h>

#include <algorithm>

namespace conversation {
namespace {

std::size_t PrivateMemory() {
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof memory;
  ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &memory, sizeof memory);
  return memory.PagefileUsage;
}

bool SamplesMemory(std::size_t weight) {
  static unsigned count = 0;
  return weight > InsertionMeter::kSmall || ++count % 8 == 0;
}

double Milliseconds(FILETIME time) {
  return static_cast<double>(ULARGE_INTEGER{{time.dwLowDateTime, time.dwHighDateTime}}.QuadPart) / 1e4;
}

}  // namespace

double ProcessorMilliseconds() {
  FILETIME created{}, ended{}, kernel{}, user{};
  ::GetThreadTimes(::GetCurrentThread(), &created, &ended, &kernel, &user);
  return Milliseconds(kernel) + Milliseconds(user);
}

InsertionMeter::InsertionMeter(LayoutCost& cost, std::size_t weight)
    : cost_(cost),
      weight_(weight),
      samplesMemory_(SamplesMemory(weight)),
      memory_(samplesMemory_ ? PrivateMemory() : 0) {}

InsertionMeter::~InsertionMeter() {
  cost_.AddTime(weight_, sinceBegin_.Milliseconds());
  if (samplesMemory_) cost_.AddGrowth(weight_, std::max(PrivateMemory(), memory_) - memory_);
}

}  // namespace conversation
