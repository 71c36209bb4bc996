// Start at logon.
#pragma once

#include <cstdint>

namespace core {

// 0 removes the logon entry, 1 writes it (program directory, "\", file name without extension, no quotes); any other
// value changes nothing. Failures are ignored.
void SetRunAtLogon(std::int16_t flag);

}  // namespace core
