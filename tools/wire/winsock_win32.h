// Starts Winsock, and describes its errors.
#pragma once

#include <string>

namespace wire {

// Throws core::RuntimeError.
void StartWinsock();

std::string SystemErrorText(int number);

}  // namespace wire
