// File access. Every failure is a RuntimeError with the number that the program shows: 53 not found, 61 disk full, 70
// locked by another program, 75 read-only, a folder or access denied, 76 folder missing.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace core {

// The folder of the running program, without a trailing "\" except for a root directory, "C:\".
std::string ProgramDirectory();

// In native builds only. Overrides ProgramDirectory(), which is the folder of the running program by default.
void SetProgramDirectory(std::string folder);

// ProgramDirectory + "\" + name; "/" in native builds.
std::string InProgramDirectory(std::string_view name);

// False for a folder.
bool FileExists(const std::string& path);

// Reads at most kMaxFileSize bytes: no file of the program comes near it, and a larger one must not exhaust the memory.
inline constexpr std::size_t kMaxFileSize = 16u << 20;
std::string ReadFile(const std::string& path);

// Creates the file when it is missing.
void AppendToFile(const std::string& path, std::string_view bytes);

// Replaces the whole file: writes a temporary file with a unique name in the same folder and moves it over the old one,
// so that neither a crash nor a full disk leaves a torn file. On failure the old file is unchanged. Where that is not
// possible (a folder that takes no new file, a reader that keeps the old one open) the file is written in place, and
// its former content restored when that fails.
void WriteFileSafely(const std::string& path, std::string_view bytes);

// The same for content too large for one string: `write` passes it to the sink piece by piece. It is called a second
// time when the temporary file cannot be moved.
using Sink = std::function<void(std::string_view)>;
using Writer = std::function<void(const Sink&)>;
void WriteFileSafely(const std::string& path, const Writer& write);

// Deletes the temporary files that WriteFileSafely left in a folder when a copy was killed. Keeps those changed within
// the last hour, because another user's copy may be saving there now. Failures are ignored.
void RemoveLeftovers(const std::string& folder) noexcept;

}  // namespace core
