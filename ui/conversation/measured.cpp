#include "ui/conversation/measured.h"

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

bool AsksMemory(std::size_t weight) {
  static unsigned count = 0;
  return weight > Measured::kSmall || ++count % 8 == 0;
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

Measured::Measured(BoxCost& cost, std::size_t weight)
    : cost_(cost), weight_(weight), asksMemory_(AsksMemory(weight)), memory_(asksMemory_ ? PrivateMemory() : 0) {}

Measured::~Measured() {
  cost_.Took(weight_, sinceBegin_.Milliseconds());
  if (asksMemory_) cost_.Grew(weight_, std::max(PrivateMemory(), memory_) - memory_);
}

}  // namespace conversation
