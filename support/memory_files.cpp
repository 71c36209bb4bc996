#include "support/memory_files.h"

#include "core/file_steps.h"
#include "core/files.h"

namespace support {
namespace {

MemoryFiles gFiles;
std::string gFolder = "/quillon";

bool StepFails() { return ++gFiles.steps >= gFiles.firstFailing && gFiles.steps <= gFiles.lastFailing; }

void Step() {
  if (StepFails()) throw core::RuntimeError(gFiles.failure);
}

std::string& Existing(const std::string& path) {
  const auto found = gFiles.files.find(path);
  if (found == gFiles.files.end()) throw core::RuntimeError(core::Err::FileNotFound);
  return found->second;
}

void Append(std::string& file, std::string_view bytes) {
  const bool fails = StepFails();
  file.append(bytes.substr(0, fails ? bytes.size() / 2 : bytes.size()));
  if (fails) throw core::RuntimeError(gFiles.failure);
}

void MakeNew(const std::string& path) {
  Step();
  if (!gFiles.takesNewFiles) throw core::RuntimeError(core::Err::PathFileAccess);
  gFiles.files[path];
}

}  // namespace

MemoryFiles& Files() { return gFiles; }

std::string& MemoryFiles::operator[](std::string_view name) { return files[core::InProgramDirectory(name)]; }

}  // namespace support

namespace core {

using support::Files;

void SetProgramDirectory(std::string folder) { support::gFolder = std::move(folder); }

std::string ProgramDirectory() { return support::gFolder; }

std::string InProgramDirectory(std::string_view name) { return ProgramDirectory().append(1, '/').append(name); }

bool FileExists(const std::string& path) { return Files().files.contains(path); }

std::string ReadFile(const std::string& path) {
  support::Step();
  return support::Existing(path);
}

void AppendToFile(const std::string& path, std::string_view bytes) {
  if (FileExists(path)) {
    support::Step();
  } else {
    support::MakeNew(path);
  }
  support::Append(Files().files.at(path), bytes);
}

bool MayOverwrite(const std::string& path) {
  support::Step();
  return FileExists(path);
}

std::string MakeTemporaryBeside(const std::string& path) {
  std::string temporary = path + "~";
  if (support::StepFails() || !Files().takesNewFiles) return {};
  Files().files[temporary];
  return temporary;
}

std::vector<std::string> OldTemporaries(const std::string&) { return {}; }  // this process is not killed

void MakeFile(const std::string& path) { support::MakeNew(path); }

void Overwrite(const std::string& path, const Writer& write) {
  support::Step();
  std::string& file = support::Existing(path);
  file.clear();
  write([&](std::string_view bytes) { support::Append(file, bytes); });
}

bool MoveOver(const std::string& from, const std::string& to) {
  if (support::StepFails()) return false;
  Files().files[to] = std::move(support::Existing(from));
  Files().files.erase(from);
  return true;
}

// Frees space, so it works on a full disk.
void RemoveFile(const std::string& path) noexcept { Files().files.erase(path); }

}  // namespace core
