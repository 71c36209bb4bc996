// The files beside the program. Every failure is a RuntimeError with the number that the program shows: 53 not found,
// 61 disk full, 70 held by another program, 75 read-only, a folder or access denied, 76 folder missing.
#pragma once

#include <string>
#include <string_view>

namespace core {

// The folder of the running program, without a closing "\" (but for a root directory, "C:\").
std::string ProgramDirectory();

// ProgramDirectory + "\" + name; "/" in native builds.
std::string InProgramDirectory(std::string_view name);

bool FileExists(const std::string& path);

std::string ReadFile(const std::string& path);

// Opens for appending (made when missing), writes, closes.
void AppendToFile(const std::string& path, std::string_view bytes);

// Replaces the file whole: writes a temporary file in the same folder and moves it over the old one, so that neither a
// crash nor a full disk leaves a torn file. On failure the old file stands as it was.
void WriteFileSafely(const std::string& path, std::string_view bytes);

}  // namespace core
