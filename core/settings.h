// The settings file, User.ini beside the program.
#pragma once

#include <functional>
#include <string_view>

#include "core/program.h"

namespace core {

// Loads the file into the globals, the main window's bounds and the roster's lists, and loads the language table.
// Writes the default file first when there is none. A failure ends the reading and replaces the file by the default
// one; what was read is kept. Throws when the default file cannot be written; also throws std::bad_alloc, which leaves
// the file unchanged.
void ReadSets(Program& program);

// Reads the content of a settings file. Throws Err::InputPastEnd, Err::TypeMismatch or Err::Overflow for a bad record,
// and the errors of LoadLang.
void ReadSetsFrom(std::string_view bytes, Program& program);

// Writes the file, with the screen name in use; during start-up, when that is a hidden one, with the user's own. Throws
// the file's error, and Err::OutOfMemory while SettingsAreComplete() is false: the file has more than was read.
void SaveSets(Program& program);

// False from the beginning of ReadSets until it has ended other than by std::bad_alloc.
bool SettingsAreComplete();

// Writes the file of a first start. Throws the file's error.
void WriteDefSets();

// Gives every setting its default again; for what starts the program anew in the same process.
void ResetSettings();

// Passes the value of every setting, a number as text, in file order. Allocates nothing.
void VisitSettings(const std::function<void(std::string_view value)>& visit);

}  // namespace core
