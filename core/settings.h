// The settings file, User.ini beside the program.
#pragma once

#include <string_view>

#include "core/program.h"

namespace core {

// Loads the file into the globals, the main window's place and the roster's lists; the language table is loaded on the
// way. Writes the default file first when there is none. Any failure while reading replaces the file by the default
// one and ends the reading; what was read stays. Throws only when that default file cannot be written.
void ReadSets(Program& program);

// The reading itself, from the content of a settings file. Throws what goes wrong with a record: Err::InputPastEnd,
// Err::TypeMismatch, Err::Overflow, and the failures of LoadLang.
void ReadSetsFrom(std::string_view bytes, Program& program);

// Writes the whole file: with the name in use, or, while a start listens under a hidden one, the user's. Throws the
// file's error.
void SaveSets(Program& program);

// Writes the file of a first start. Throws the file's error.
void WriteDefSets();

}  // namespace core
