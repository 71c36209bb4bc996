// A whole program that has joined a network of two others and has a chat open with one of them; its files are in
// memory.
#pragma once

#include "core/globals.h"
#include "core/language.h"
#include "support/memory_files.h"
#include "support/recording_desktop.h"
#include "support/whole_program.h"

namespace support {

class JoinedProgram : public WholeProgram {
 public:
  JoinedProgram() {
    ResetDesktop();
    Files() = {};
    Files()["Lang.con"] = "Code,English,Deutsch\r\n1201,user|users|online,Benutzer|Benutzer|da\r\n";
    core::gLangError = -1;  // do not report the missing texts
    core::LoadLang();
    Desktop().onPending = [] { Desktop().ticks += core::gStarting != 0 ? 1000 : 0; };
    Join();
    for (const char* packet : {"bob|M/", "cy|M/\xDEhi", "cy|S/1"}) Hear(packet);
  }

  void Join() { Accept({.name = "anna", .blocked = {"eve"}, .groupLines = {"F|bob|", "G|cy|"}}); }
};

}  // namespace support
