// What the save dialog makes of a name that is typed or picked: a filter, a folder to go to, or the file to write.
// Paths have the form of Windows, case does not count, and nothing here looks at a disk.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

// The file types as the dialog lists them. The extension is part of the caption.
inline constexpr const char* kSaveTypes[] = {"Text Files (*.txt)", "Rich Text Files (*.rtf)"};

// ".txt" of "Text Files (*.txt)": the four characters before the closing bracket.
std::string_view ExtensionOf(std::string_view typeCaption);

// "*.txt" of ".txt".
std::string PatternOf(std::string_view extension);

// The typed name after another type is chosen: an extension that is the one of the pattern shown so far becomes the new
// one, any other name stays.
std::string SwitchExtension(std::string_view name, std::string_view formerPattern, std::string_view extension);

// Whether a file list of this pattern shows the name. "*" and "?" are wild; several patterns are parted by ";".
bool MatchesPattern(std::string_view name, std::string_view pattern);

// The folder with one "\" behind it, unless it has one.
std::string ClosedFolder(std::string_view folder);

// A name as seen from a folder, always from a root on: with a leading "\" it begins at the root of its drive, without
// one it is below the folder, or at the root of another drive ("D:notes", "D:"), whatever folder the system has for
// that drive. A name without a drive has the folder's.
std::string FullPath(std::string_view folder, std::string_view name);

// The folder's ancestors and itself: "C:\", "Users", "anna"; of a network folder the share is the first. Joined by
// "\" they give the folder again.
std::vector<std::string> PathSteps(std::string_view folder);

// The folder that the first `count` steps lead to, with a closing "\".
std::string FolderOf(const std::vector<std::string>& steps, std::size_t count);

enum class SaveAction { None, Filter, GoTo, Save };

struct SaveDecision {
  SaveAction action = SaveAction::None;
  std::string text{};  // the pattern; the folder, with a closing "\"; the full path of the file
};

// What pressing Save means. `isFolder` tells whether a full path is an existing folder.
SaveDecision DecideSave(std::string_view typed, std::string_view folder, std::string_view extension,
                        const std::function<bool(const std::string&)>& isFolder);

}  // namespace toolkit
