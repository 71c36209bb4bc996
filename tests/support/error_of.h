// The error number of an action.
#pragma once

#include "core/runtime_error.h"

namespace support {

// 0 when it succeeds.
template <typename Action>
long ErrorOf(Action action) {
  try {
    action();
  } catch (const core::RuntimeError& error) {
    return error.number;
  }
  return 0;
}

}  // namespace support
