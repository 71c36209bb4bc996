// Access to drives and folders.
#pragma once

#include <string>
#include <vector>

namespace toolkit {

struct FolderContent {
  std::vector<std::string> folders, files;  // names, in the sort order of the locale
};

// The content of a folder, without hidden entries and without names that are not in the code page, since those could
// not be opened. Throws core::Err::PathNotFound, DeviceUnavailable or DiskNotReady when it cannot be opened.
FolderContent ReadFolder(const std::string& folder);

// Whether the path is an existing folder.
bool IsFolder(const std::string& path);

// The root folders of all drives: "C:\".
std::vector<std::string> Drives();

// "C:", with the volume label of a fixed disk; querying other disks may be slow.
std::string DriveCaption(const std::string& root);

// The full path, without "." and "..".
std::string CleanPath(const std::string& path);

// The user's documents; the program's folder when there are none.
std::string DocumentsFolder();

}  // namespace toolkit
