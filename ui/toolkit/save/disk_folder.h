// Drives and folders of the machine.
#pragma once

#include <string>
#include <vector>

namespace toolkit {

struct FolderContent {
  std::vector<std::string> folders, files;  // names, in the order in which people sort them
};

// What is in a folder. Hidden entries are left out, and so are names that the code page cannot spell: they could be
// shown, but not opened. Throws core::Err::PathNotFound, DeviceUnavailable or DiskNotReady when it cannot be opened.
FolderContent ReadFolder(const std::string& folder);

// An existing folder, in whatever form it is named.
bool IsFolder(const std::string& path);

// The root folders of all drives: "C:\".
std::vector<std::string> Drives();

// "C:", with the label of the disk when it is a fixed one: asking any other may take its time.
std::string DriveCaption(const std::string& root);

// A path without "." and "..", from the root on.
std::string CleanPath(const std::string& path);

// The user's documents; the program's folder when there are none.
std::string DocumentsFolder();

}  // namespace toolkit
