// Start at logon: the current user's entry under the Run key, value "Quillon". Failures are ignored.
#pragma once

#include <cstdint>
#include <string>

namespace core {

// 0 removes the logon entry, 1 writes it (program directory, "\", file name without extension, no quotes); other values
// are ignored.
void SetRunAtLogon(std::int16_t flag);

void WriteRunValue(const std::string& command);
void DeleteRunValue();

}  // namespace core
