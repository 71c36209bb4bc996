// The base of most native tests: fresh settings, a fresh desktop, no texts, a separate program folder.
#pragma once

#include <gtest/gtest.h>

#include "core/language.h"
#include "tests/support/error_of.h"
#include "support/program_folder.h"
#include "support/recording_desktop.h"

namespace support {

class DesktopTest : public testing::Test {
 protected:
  DesktopTest() {
    ResetDesktop();
    folder.Put("Lang.con", "Code,English");
    core::LoadLang();  // or texts of an earlier test would remain
  }

  // The texts of the log, without time and quotes, each followed by ";".
  std::string Log() const {
    std::string log = folder.Get("Log.txt");
    const std::string frame = "\"" + Desktop().clock + " ";
    for (std::size_t at; (at = log.find(frame)) != std::string::npos;) log.erase(at, frame.size());
    for (std::size_t at; (at = log.find("\"\r\n")) != std::string::npos;) log.replace(at, 3, ";");
    return log;
  }

  ProgramFolder folder;
};

}  // namespace support
