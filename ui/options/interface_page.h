// The second page of the options dialog: position and sound of new messages, language, start at logon.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "ui/options/option_values.h"
#include "ui/options/page.h"
#include "ui/toolkit/handles.h"

namespace options {

enum InterfaceControl : int { kTestButton = 120, kFirstPosition = 150, kLanguageBox = 165, kStartUpBox };

class InterfacePage : public Page {
 public:
  HWND FirstControl() const override { return tbPos.hwnd(); }
  void LayOut() override;
  void Fill() override;
  void InputSets() override;
  void WriteSets() override;  // all but the language

  void AddPos();              // the buttons of the positions
  void SetPos(int position);  // 1 to 4; any other number releases all
  void AddSnd();              // the list of sounds

  // If another language is selected, asks whether to switch now; on Yes loads it and updates the captions of every
  // window. Throws what LoadLang throws; the language stays unchanged then.
  void ChangeLanguage();

  // Stores the selected language.
  void WriteLanguage();

 private:
  void CreateControls() override;
  std::span<const toolkit::Command> Commands() const override;
  LRESULT OnNotify(NMHDR& header) override { return lvSnd.OnNotify(header); }
  void tbSnd_Click();
  std::optional<std::string> SelectedSound() const;
  std::optional<std::string> SelectedLanguage() const;

  HWND lblcapPosition = nullptr, lblcapHeight = nullptr, lblcapLanguage = nullptr, lblcapSound = nullptr;
  HWND lblHeight = nullptr, CMBlang = nullptr, chkStartUp = nullptr;
  ChoiceList lvSnd;
  toolkit::PictureGroup tbPos;
  toolkit::Toolbar tbSnd;
  toolkit::ImageList imlSnd;
  std::vector<Sound> sounds_;  // of lvSnd
};

}  // namespace options
