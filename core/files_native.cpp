#include "core/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "core/file_steps.h"
#include "core/runtime_error.h"

namespace core {
namespace {

std::string gProgramDirectory;

std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : path.substr(0, slash + 1);
}

std::string FolderOfThisProgram() {
  std::array<char, PATH_MAX> path{};
  const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size());
  std::string folder = FolderOf(std::string(path.data(), length > 0 ? static_cast<std::size_t>(length) : 0));
  if (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  return folder;
}

bool IsKind(const std::string& path, mode_t kind) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && (status.st_mode & S_IFMT) == kind;
}

[[noreturn]] void Fail(const std::string& path) {
  switch (errno) {
    case ENOENT:
    case ENOTDIR:
      throw RuntimeError(IsKind(FolderOf(path), S_IFDIR) ? Err::FileNotFound : Err::PathNotFound);
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
      throw RuntimeError(Err::DiskFull);
    default:
      throw RuntimeError(Err::PathFileAccess);
  }
}

class File {
 public:
  File(const std::string& path, int flags) : path_(path), descriptor_(::open(path.c_str(), flags | O_CLOEXEC, 0666)) {
    if (descriptor_ < 0) Fail(path_);
  }
  ~File() { ::close(descriptor_); }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  std::string Read() const {
    std::string bytes;
    char buffer[16384];
    while (bytes.size() < kMaxFileSize) {
      const ssize_t read = ::read(descriptor_, buffer, sizeof buffer);
      if (read < 0) Fail(path_);
      if (read == 0) break;
      bytes.append(buffer, static_cast<std::size_t>(read));
    }
    bytes.resize(std::min(bytes.size(), kMaxFileSize));
    return bytes;
  }

  void Write(std::string_view bytes) const {
    const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
    if (written < 0) Fail(path_);
    if (static_cast<std::size_t>(written) < bytes.size()) throw RuntimeError(Err::DiskFull);
  }

 private:
  std::string path_;
  int descriptor_;
};

}  // namespace

void SetProgramDirectory(std::string folder) { gProgramDirectory = std::move(folder); }

std::string ProgramDirectory() {
  if (gProgramDirectory.empty()) gProgramDirectory = FolderOfThisProgram();
  return gProgramDirectory;
}

std::string InProgramDirectory(std::string_view name) { return ProgramDirectory().append(1, '/').append(name); }

bool FileExists(const std::string& path) { return IsKind(path, S_IFREG); }

std::string ReadFile(const std::string& path) { return File(path, O_RDONLY).Read(); }

void AppendToFile(const std::string& path, std::string_view bytes) {
  File(path, O_WRONLY | O_APPEND | O_CREAT).Write(bytes);
}

bool MayOverwrite(const std::string& path) {
  if (IsKind(path, S_IFDIR)) throw RuntimeError(Err::PathFileAccess);
  if (::access(path.c_str(), W_OK) == 0) return true;
  if (errno != ENOENT) Fail(path);
  return false;
}

std::string MakeTemporaryBeside(const std::string& path) {
  std::string temporary = FolderOf(path) + "/QuiXXXXXX";
  const int made = ::mkstemp(temporary.data());
  if (made < 0) return {};
  ::close(made);
  return temporary;
}

std::vector<std::string> OldTemporaries(const std::string& folder) {
  const auto anHourAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
  std::vector<std::string> old;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    const std::string name = entry.path().filename();
    const bool ours = entry.is_regular_file() && name.starts_with("Qui") && name.size() == 9;
    if (ours && entry.last_write_time() < anHourAgo) old.push_back(entry.path());
  }
  return old;
}

void MakeFile(const std::string& path) { File(path, O_WRONLY | O_CREAT | O_EXCL); }

void Overwrite(const std::string& path, const Writer& write) {
  const File file(path, O_WRONLY | O_TRUNC);
  write([&](std::string_view bytes) { file.Write(bytes); });
}

bool MoveOver(const std::string& from, const std::string& to) { return ::rename(from.c_str(), to.c_str()) == 0; }

void RemoveFile(const std::string& path) noexcept { ::unlink(path.c_str()); }

}  // namespace core
