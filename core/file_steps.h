// The steps of which core/files.cpp makes a safe writing, for each system. They stand apart from their order so that
// native tests can let each of them fail.
#pragma once

#include <string>

#include "core/files.h"

namespace core {

// True when the file exists and may be written, false when there is none. Throws when it is protected, held by another
// program or a folder. Asked beforehand: moving another file over such a one fails with a code that does not say why.
bool MayOverwrite(const std::string& path);

// A new, empty file beside another one, of a name that was free; empty when the folder takes no file.
std::string MakeTemporaryBeside(const std::string& path);

// A new, empty file; throws also when there is one meanwhile.
void MakeFile(const std::string& path);

// Empties an existing file and writes what `write` hands over, until it is on the disk. Throws the file's error; the
// file then holds a part.
void Overwrite(const std::string& path, const Writer& write);

// A file in the place of another one, in one step. False, and nothing has changed, when the system refuses.
bool MoveOver(const std::string& from, const std::string& to);

// Nothing happens when it cannot be removed.
void RemoveFile(const std::string& path) noexcept;

}  // namespace core
