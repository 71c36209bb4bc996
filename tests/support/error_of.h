// The number with which an action fails.
#pragma once

#include "core/runtime_error.h"

namespace support {

// 0 when it does not.
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
