// The platform-specific steps of a safe write. core/files.cpp puts them in order, so that native tests cover it.
#pragma once

#include <string>
#include <vector>

#include "core/files.h"

namespace core {

// True when the file exists and is writable, false when it does not exist. Throws when it is read-only, locked by
// another program or a folder. Checked first, because replacing such a file fails with an error that does not say why.
bool MayOverwrite(const std::string& path);

// Creates an empty file with a unique name in the same folder; returns its path, empty when that is not possible.
std::string MakeTemporaryBeside(const std::string& path);

// The files of a folder that are named like those of MakeTemporaryBeside and have not changed for an hour.
std::vector<std::string> OldTemporaries(const std::string& folder);

// Creates an empty file; throws when it exists by now.
void MakeFile(const std::string& path);

// Truncates an existing file, writes what `write` produces and flushes it to the disk. On an error, which is thrown,
// the file is incomplete.
void Overwrite(const std::string& path, const Writer& write);

// Replaces a file by another one atomically. False, with nothing changed, when the system refuses.
bool MoveOver(const std::string& from, const std::string& to);

// Failures are ignored.
void RemoveFile(const std::string& path) noexcept;

}  // namespace core
