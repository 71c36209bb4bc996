#include "ui/toolkit/save/disk_folder.h"

#include <windows.h>
#include <shlobj.h>

#include <algorithm>
#include <cstring>

#include "core/files.h"
#include "core/files_win32.h"
#include "core/runtime_error.h"
#include "ui/toolkit/save/save_name.h"

namespace toolkit {
namespace {

// A drive without a disk gives an error instead of a message box of the system.
class QuietDrives {
 public:
  QuietDrives() : former_(::SetErrorMode(SEM_FAILCRITICALERRORS)) {}
  QuietDrives(const QuietDrives&) = delete;
  QuietDrives& operator=(const QuietDrives&) = delete;
  ~QuietDrives() { ::SetErrorMode(former_); }

 private:
  UINT former_;
};

[[noreturn]] void Refuse(DWORD code) {
  if (code == ERROR_NOT_READY) throw core::RuntimeError(core::Err::DiskNotReady);
  if (code == ERROR_INVALID_DRIVE) throw core::RuntimeError(core::Err::DeviceUnavailable);
  throw core::RuntimeError(core::Err::PathNotFound);
}

bool IsShown(const WIN32_FIND_DATAA& entry) {
  if (std::strcmp(entry.cFileName, ".") == 0 || std::strcmp(entry.cFileName, "..") == 0) return false;
  return (entry.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) == 0 && std::strchr(entry.cFileName, '?') == nullptr;
}

void Sort(std::vector<std::string>& names) {
  std::ranges::sort(names, [](const std::string& a, const std::string& b) {
    return ::CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, a.data(), static_cast<int>(a.size()), b.data(),
                            static_cast<int>(b.size())) == CSTR_LESS_THAN;
  });
}

}  // namespace

FolderContent ReadFolder(const std::string& folder) {
  const QuietDrives quiet;
  FolderContent content;
  core::FileSearch search(ClosedFolder(folder) + "*");
  if (!search.IsOpen()) {
    const DWORD code = ::GetLastError();
    if (code == ERROR_FILE_NOT_FOUND) return content;  // the root of an empty disk
    Refuse(code);
  }
  do {
    const WIN32_FIND_DATAA& entry = search.Found();
    if (!IsShown(entry)) continue;
    const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    (isFolder ? content.folders : content.files).emplace_back(entry.cFileName);
  } while (search.Next());
  Sort(content.folders);
  Sort(content.files);
  return content;
}

bool IsFolder(const std::string& path) {
  const QuietDrives quiet;
  const DWORD attributes = ::GetFileAttributesA(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::vector<std::string> Drives() {
  std::vector<std::string> drives;
  const DWORD present = ::GetLogicalDrives();
  for (char letter = 'A'; letter <= 'Z'; ++letter)
    if (present & (1u << (letter - 'A'))) drives.push_back(std::string(1, letter) + ":\\");
  return drives;
}

std::string DriveCaption(const std::string& root) {
  const QuietDrives quiet;
  std::string caption = root.substr(0, 2);
  char label[MAX_PATH + 1];
  if (::GetDriveTypeA(root.c_str()) == DRIVE_FIXED &&
      ::GetVolumeInformationA(root.c_str(), label, sizeof label, nullptr, nullptr, nullptr, nullptr, 0) && label[0])
    caption.append("  [").append(label).append("]");
  return caption;
}

std::string CleanPath(const std::string& path) {
  char clean[MAX_PATH];
  const DWORD length = ::GetFullPathNameA(path.c_str(), sizeof clean, clean, nullptr);
  return length == 0 || length >= sizeof clean ? path : std::string(clean, length);
}

std::string DocumentsFolder() {
  char path[MAX_PATH];
  if (::SHGetFolderPathA(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, path) == S_OK && IsFolder(path))
    return path;
  return core::ProgramDirectory();
}

}  // namespace toolkit
