#include "core/files.h"

#include <optional>

#include "core/callback_guard.h"
#include "core/file_steps.h"
#include "core/runtime_error.h"

namespace core {
namespace {

// For a file that was created for this write.
void WriteOrRemove(const std::string& path, const Writer& write) {
  try {
    Overwrite(path, write);
  } catch (...) {
    RemoveFile(path);
    throw;
  }
}

// False when the folder does not allow a file to be created or replaced.
bool Replace(const std::string& path, const Writer& write) {
  const std::string temporary = MakeTemporaryBeside(path);
  if (temporary.empty()) return false;
  WriteOrRemove(temporary, write);
  if (MoveOver(temporary, path)) return true;
  RemoveFile(temporary);
  return false;
}

// Nothing when the file cannot be read, or is larger than what the program reads.
std::optional<std::string> Contents(const std::string& path) {
  try {
    std::string bytes = ReadFile(path);
    if (bytes.size() < kMaxFileSize) return bytes;
  } catch (const RuntimeError&) {
  }
  return std::nullopt;
}

// Restoring needs no more space than the old content had.
void OverwriteOrRestore(const std::string& path, const Writer& write) {
  const std::optional<std::string> former = Contents(path);
  try {
    Overwrite(path, write);
  } catch (...) {
    if (former) Overwrite(path, [&](const Sink& sink) { sink(*former); });
    throw;
  }
}

}  // namespace

void WriteFileSafely(const std::string& path, std::string_view bytes) {
  WriteFileSafely(path, [bytes](const Sink& sink) { sink(bytes); });
}

void WriteFileSafely(const std::string& path, const Writer& write) {
  const bool exists = MayOverwrite(path);
  if (Replace(path, write)) return;
  if (exists) return OverwriteOrRestore(path, write);
  MakeFile(path);
  WriteOrRemove(path, write);
}

void RemoveLeftovers(const std::string& folder) noexcept {
  GuardedSilently([&folder] {
    for (const std::string& path : OldTemporaries(folder)) RemoveFile(path);
  });
}

}  // namespace core
