// The files beside the program. Every failure is a RuntimeError with the number that the program shows: 53 not found,
// 61 disk full, 70 held by another program, 75 read-only, a folder or access denied, 76 folder missing.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace core {

// The folder of the running program, without a closing "\" (but for a root directory, "C:\").
std::string ProgramDirectory();

// ProgramDirectory + "\" + name; "/" in native builds.
std::string InProgramDirectory(std::string_view name);

// False for a folder of that name.
bool FileExists(const std::string& path);

// At most kMaxFileSize bytes: no file of the program comes near it, and a larger one must not exhaust the memory.
inline constexpr std::size_t kMaxFileSize = 16u << 20;
std::string ReadFile(const std::string& path);

// Opens for appending (made when missing), writes, closes.
void AppendToFile(const std::string& path, std::string_view bytes);

// Replaces the file whole: writes a temporary file, of a name that no other has, in the same folder and moves it over
// the old one, so that neither a crash nor a full disk leaves a torn file. On failure the old file stands as it was.
// Where the folder takes no temporary file, or someone keeps the old one open for reading, but the file itself may be
// written, it is written in place; what it held is put back when that fails, unless the program itself is ended.
void WriteFileSafely(const std::string& path, std::string_view bytes);

// The same for what may be too large to stand in memory at once: `write` hands it over piece by piece, a second time
// when the first file could not take the place.
using Sink = std::function<void(std::string_view)>;
using Writer = std::function<void(const Sink&)>;
void WriteFileSafely(const std::string& path, const Writer& write);

}  // namespace core
