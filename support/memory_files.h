// The program's files in memory, linked in place of those on disk: fast enough for a fuzzer, and every step of writing
// can be made to fail.
#pragma once

#include <functional>
#include <limits>
#include <map>
#include <string>
#include <string_view>

#include "core/runtime_error.h"

namespace support {

struct MemoryFiles {
  std::map<std::string, std::string, std::less<>> files;  // by path

  // Steps are opens, writes and moves, counted from 1. Those from the first failing one to the last one fail, a write
  // after half of its bytes.
  int steps = 0, firstFailing = std::numeric_limits<int>::max(), lastFailing = std::numeric_limits<int>::max();
  core::Err failure = core::Err::DiskFull;
  bool takesNewFiles = true;  // the folder

  // In the program's folder.
  std::string& operator[](std::string_view name);
};

MemoryFiles& Files();

}  // namespace support
