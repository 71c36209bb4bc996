#include "core/files_native.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "core/files.h"
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

void WriteFileSafely(const std::string& path, std::string_view bytes) {
  WriteFileSafely(path, [bytes](const Sink& sink) { sink(bytes); });
}

void WriteFileSafely(const std::string& path, const Writer& write) {
  if (IsKind(path, S_IFDIR)) throw RuntimeError(Err::PathFileAccess);
  std::string temporary = FolderOf(path) + "/QuiXXXXXX";
  const int made = ::mkstemp(temporary.data());
  if (made < 0) Fail(path);
  ::close(made);
  try {
    const File file(temporary, O_WRONLY);
    write([&](std::string_view bytes) { file.Write(bytes); });
    if (::rename(temporary.c_str(), path.c_str()) != 0) Fail(path);
  } catch (...) {
    ::unlink(temporary.c_str());
    throw;
  }
}

}  // namespace core
