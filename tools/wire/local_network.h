// The machine's interfaces and names, from the system.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace wire {

// One IPv4 address of an interface.
struct Interface {
  std::string name;  // in UTF-8
  std::uint32_t address = 0;
  bool isUp = false, broadcasts = false;
};

// Throws core::RuntimeError.
std::vector<Interface> Interfaces();

// The machine's network name.
std::string HostName();

// The user who runs this program, in UTF-8.
std::string LogonName();

}  // namespace wire
