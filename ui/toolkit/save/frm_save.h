// The program's own save dialog.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "ui/toolkit/save/icon_list.h"
#include "ui/toolkit/window.h"

namespace toolkit {

// Asks for a file name, modally, starting in the user's documents. Returns the full path with the extension of the
// selected type (".txt" or ".rtf"), empty when cancelled. The file may exist; the caller writes it.
std::string AskSaveName(const Caption& title);

class FrmSave : public Window {
 public:
  explicit FrmSave(const Caption& title = {6001, "Save File"}) : title_(title) {}

  // Creates the window, hidden, centred in the work area.
  void Load();

  // Sets the drive, the folder (everything up to the last "\") and the name from a path. Throws when the folder cannot
  // be opened; nothing changes then.
  void SetLocation(const std::string& path);

  // Refreshes the list of files and selects its first entry. Reports a folder that no longer exists.
  void rFileList();

  // The selected file; empty before Save.
  const std::string& Result() const { return result_; }

 private:
  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  void CreateControls();
  void LayOut() override;
  std::span<const Command> Commands() const override;
  void OnEnter();
  void cmdSave_Click();
  void cmdClose_Click();
  void txtFileType_Click();
  void Drive1_Change();
  void List1_Click();
  void txtFileName_LostFocus();
  void OpenSelectedFolder();
  void OpenOrReport(const std::function<void()>& open);
  void OpenFolder(const std::string& folder);
  void SelectDrive();
  void ShowFiles();
  void ShowName(const std::string& name);

  const Caption title_;
  HWND Label1[3] = {};
  HWND Drive1 = nullptr, txtFileType = nullptr, txtFileName = nullptr, cmdSave = nullptr, cmdClose = nullptr;
  IconList Dir1, List1;

  std::vector<std::string> drives_;  // root folders, in the order of Drive1
  std::vector<std::string> File1;    // all files of the folder; List1 shows those that match the pattern
  std::string folder_;
  std::vector<std::string> steps_;  // of folder_, the first entries of Dir1
  std::string pattern_ = "*.txt";
  std::string result_;
};

}  // namespace toolkit
