#include "core/files_win32.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "core/file_steps.h"
#include "core/runtime_error.h"
#include "core/text.h"

namespace core {
namespace {

struct FailureRow {
  DWORD code;
  Err error;
};

constexpr FailureRow kFailures[] = {
    {ERROR_FILE_NOT_FOUND, Err::FileNotFound},
    {ERROR_PATH_NOT_FOUND, Err::PathNotFound},
    {ERROR_INVALID_NAME, Err::PathNotFound},
    {ERROR_BAD_NETPATH, Err::PathNotFound},
    {ERROR_BAD_NET_NAME, Err::PathNotFound},
    {ERROR_DISK_FULL, Err::DiskFull},
    {ERROR_HANDLE_DISK_FULL, Err::DiskFull},
    {ERROR_INVALID_DRIVE, Err::DeviceUnavailable},
    {ERROR_SHARING_VIOLATION, Err::PermissionDenied},
    {ERROR_LOCK_VIOLATION, Err::PermissionDenied},
    {ERROR_NOT_READY, Err::DiskNotReady},
};

// Read-only files, folders and denied access are all ERROR_ACCESS_DENIED and get the same number as any other failure.
RuntimeError FailureOf(DWORD code) {
  for (const FailureRow& row : kFailures) {
    if (row.code == code) return RuntimeError(row.error);
  }
  return RuntimeError(Err::PathFileAccess);
}

[[noreturn]] void Fail() { throw FailureOf(::GetLastError()); }

class File {
 public:
  // Full sharing: copies of several users may run from one folder.
  File(const std::string& path, DWORD access, DWORD disposition)
      : handle_(::CreateFileA(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              disposition, FILE_ATTRIBUTE_NORMAL, nullptr)) {}
  ~File() {
    if (IsOpen()) ::CloseHandle(handle_);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

  std::string Read() const {
    std::string bytes;
    char buffer[16384];
    for (DWORD read = 0; bytes.size() < kMaxFileSize; bytes.append(buffer, read)) {
      if (!::ReadFile(handle_, buffer, sizeof buffer, &read, nullptr)) Fail();
      if (read == 0) break;
    }
    bytes.resize(std::min(bytes.size(), kMaxFileSize));
    return bytes;
  }

  void Write(std::string_view bytes) const {
    DWORD written = 0;
    if (!::WriteFile(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) Fail();
    if (written < bytes.size()) throw RuntimeError(Err::DiskFull);
  }

  // Otherwise a power failure after the rename could leave an empty file.
  void Flush() const { ::FlushFileBuffers(handle_); }

 private:
  HANDLE handle_;
};

bool IsReadOnly(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

// The system appends up to four hexadecimal digits and the extension to the prefix.
bool IsTemporaryName(std::string_view name) {
  const std::string lowerCase = LowerCase(name);
  const bool framed = lowerCase.starts_with("qui") && lowerCase.ends_with(".tmp") && name.size() - 8 < 4;
  return framed && lowerCase.find_first_not_of("0123456789abcdef", 3) == name.size() - 4;
}

std::uint64_t Number(const FILETIME& time) { return std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime; }

std::uint64_t AnHourAgo() {
  FILETIME now{};
  ::GetSystemTimeAsFileTime(&now);
  return Number(now) - 3600u * std::uint64_t{10'000'000};  // in units of 100 ns
}

}  // namespace

std::string ProgramPath() {
  char path[MAX_PATH];
  const DWORD length = ::GetModuleFileNameA(nullptr, path, MAX_PATH);
  return std::string(path, length);
}

std::string ProgramDirectory() {
  std::string path = ProgramPath();
  const std::size_t slash = FindLast(path, "\\");
  const bool root = slash == 2 && path[1] == ':';
  path.resize(root ? slash + 1 : slash);
  return path;
}

std::string InProgramDirectory(std::string_view name) { return ProgramDirectory().append(1, '\\').append(name); }

bool FileExists(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::string ReadFile(const std::string& path) {
  const File file(path, GENERIC_READ, OPEN_EXISTING);
  if (!file.IsOpen()) Fail();
  return file.Read();
}

void AppendToFile(const std::string& path, std::string_view bytes) {
  if (IsReadOnly(path)) throw RuntimeError(Err::PathFileAccess);
  const File file(path, FILE_APPEND_DATA, OPEN_ALWAYS);
  if (!file.IsOpen()) Fail();
  file.Write(bytes);
}

bool MayOverwrite(const std::string& path) {
  if (IsReadOnly(path)) throw RuntimeError(Err::PathFileAccess);
  if (File(path, GENERIC_WRITE, OPEN_EXISTING).IsOpen()) return true;
  if (::GetLastError() != ERROR_FILE_NOT_FOUND) Fail();
  return false;
}

// The system picks a unique, short name. A path too long for it gets no temporary file.
std::string MakeTemporaryBeside(const std::string& path) {
  char folder[MAX_PATH], temporary[MAX_PATH];
  char* name = nullptr;
  const DWORD length = ::GetFullPathNameA(path.c_str(), MAX_PATH, folder, &name);
  if (length == 0 || length >= MAX_PATH || !name) return {};
  *name = '\0';
  return ::GetTempFileNameA(folder, "Qui", 0, temporary) ? temporary : std::string();
}

std::vector<std::string> OldTemporaries(const std::string& folder) {
  std::vector<std::string> old;
  FileSearch search(folder + "\\Qui*");
  for (bool more = search.IsOpen(); more; more = search.Next()) {
    const WIN32_FIND_DATAA& found = search.Found();
    const bool file = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    if (file && IsTemporaryName(found.cFileName) && Number(found.ftLastWriteTime) < AnHourAgo())
      old.push_back(folder + "\\" + found.cFileName);
  }
  return old;
}

void MakeFile(const std::string& path) {
  if (!File(path, GENERIC_WRITE, CREATE_NEW).IsOpen()) Fail();
}

void Overwrite(const std::string& path, const Writer& write) {
  const File file(path, GENERIC_WRITE, TRUNCATE_EXISTING);
  if (!file.IsOpen()) Fail();
  write([&](std::string_view bytes) { file.Write(bytes); });
  file.Flush();
}

bool MoveOver(const std::string& from, const std::string& to) {
  return ::MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

void RemoveFile(const std::string& path) noexcept { ::DeleteFileA(path.c_str()); }

}  // namespace core
