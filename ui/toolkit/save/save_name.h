// Interpretation of a name in the save dialog: a filter, a folder to open, or the file to write. Windows paths,
// ignoring case; does not access the disk.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace toolkit {

// The file types in the dialog's order. The extension is part of the caption.
inline constexpr const char* kSaveTypes[] = {"Text Files (*.txt)", "Rich Text Files (*.rtf)"};

// ".txt" of "Text Files (*.txt)": the four characters before the closing bracket.
std::string_view ExtensionOf(std::string_view typeCaption);

// "*.txt" of ".txt".
std::string PatternOf(std::string_view extension);

// The name after another type was selected: the extension of the previous pattern is replaced, other names are
// unchanged.
std::string SwitchExtension(std::string_view name, std::string_view formerPattern, std::string_view extension);

// Whether a name matches a pattern with the wildcards "*" and "?", or one of several patterns separated by ";".
bool MatchesPattern(std::string_view name, std::string_view pattern);

// The folder with a trailing "\".
std::string ClosedFolder(std::string_view folder);

// The full path of a name relative to a folder. A leading "\" means the root of the folder's drive; a name with another
// drive ("D:notes", "D:") is relative to the root of that drive.
std::string FullPath(std::string_view folder, std::string_view name);

// The components of a folder's path: "C:\", "Users", "anna"; of a network folder the first one is the share.
std::vector<std::string> PathSteps(std::string_view folder);

// The folder of the first `count` steps, with a trailing "\".
std::string FolderOf(const std::vector<std::string>& steps, std::size_t count);

enum class SaveAction { None, Filter, GoTo, Save };

struct SaveDecision {
  SaveAction action = SaveAction::None;
  std::string text{};  // the pattern; the folder, with a closing "\"; the full path of the file
};

// Decides what Save does. `isFolder` returns whether a full path is an existing folder.
SaveDecision DecideSave(std::string_view typed, std::string_view folder, std::string_view extension,
                        const std::function<bool(const std::string&)>& isFolder);

}  // namespace toolkit
