// What the system tells of its own end of the network.
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

// A machine's name as others know it.
std::string HostName();

// Of the user who runs this, in UTF-8.
std::string LogonName();

}  // namespace wire
