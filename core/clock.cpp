#include "core/clock.h"

#include <limits>

#include "core/globals.h"
#include "core/runtime_error.h"

namespace core {

void StartTicks() { gTicks = TickCount(); }

std::int32_t ElapsedTicks(std::int32_t start) { return TicksBetween(start, TickCount()); }

std::int32_t TicksBetween(std::int32_t start, std::int32_t now) {
  const std::int64_t difference = std::int64_t{now} - start;
  if (difference < std::numeric_limits<std::int32_t>::min() || difference > std::numeric_limits<std::int32_t>::max()) {
    throw RuntimeError(Err::Overflow);
  }
  return static_cast<std::int32_t>(difference);
}

}  // namespace core
