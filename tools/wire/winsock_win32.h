// Winsock, started once, and its failures in words.
#pragma once

#include <string>

namespace wire {

// Throws core::RuntimeError.
void StartWinsock();

std::string SystemErrorText(int number);

}  // namespace wire
