// The ground on which most native tests stand: fresh settings, a fresh desktop, an empty program folder.
#pragma once

#include <gtest/gtest.h>

#include "core/runtime_error.h"
#include "tests/support/program_folder.h"
#include "tests/support/recording_desktop.h"

namespace support {

class DesktopTest : public testing::Test {
 protected:
  DesktopTest() { ResetDesktop(); }
  ProgramFolder folder;
};

// The number with which an action fails, 0 when it does not.
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
