// The search of a folder and the program's path, for everything that works on files of Windows.
#pragma once

#include <windows.h>

#include <string>

namespace core {

// The entries that match a pattern, one at a time. Not open when there is none; the reason is then
// in ::GetLastError().
class FileSearch {
 public:
  explicit FileSearch(const std::string& pattern) : handle_(::FindFirstFileA(pattern.c_str(), &found_)) {}
  FileSearch(const FileSearch&) = delete;
  FileSearch& operator=(const FileSearch&) = delete;
  ~FileSearch() {
    if (IsOpen()) ::FindClose(handle_);
  }

  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

  // False after the last entry.
  bool Next() { return ::FindNextFileA(handle_, &found_) != 0; }
  const WIN32_FIND_DATAA& Found() const { return found_; }

 private:
  WIN32_FIND_DATAA found_{};
  HANDLE handle_;
};

// The full path of the program's file.
std::string ProgramPath();

}  // namespace core
