// The options dialog: four pages, a selector above them and the commands below. Its controls hold copies of the
// settings; Accept puts them into effect, Close discards them.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <span>
#include <utility>

#include "core/program.h"
#include "ui/options/groups_page.h"
#include "ui/options/interface_page.h"
#include "ui/options/security_page.h"
#include "ui/options/user_page.h"
#include "ui/toolkit/toolbar.h"
#include "ui/toolkit/window.h"

namespace options {

enum DialogControl : int {
  kUserButton = 100,  // the buttons of the pages, in their order
  kInterfaceButton,
  kSecurityButton,
  kGroupsButton,
  kAcceptButton = 110,
  kCloseButton,
};

class FrmOpt : public toolkit::Window {
 public:
  // `shutDown`: ends the program, when the dialog is closed at start-up.
  FrmOpt(core::Program& program, std::function<void()> shutDown) : program_(program), shutDown_(std::move(shutDown)) {}

  // Set before the dialog is shown: the own name is another user's, and closing the dialog ends the program.
  bool atStartUp = false;

  // Creates the window, hidden, in the middle of the work area, with the settings in its controls.
  void Load();

  // Settings into controls.
  void InputSets();

  // Controls into settings: leaves the network under the old name, joins it under the new one, and saves all settings.
  // A network that cannot be joined is reported in a message box and stops nothing else. Throws the file's error when
  // the settings cannot be saved; they are in effect then, and the file is the old one.
  void WriteSets();

 private:
  static constexpr std::size_t kPages = 4;

  LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) override;
  std::span<const toolkit::Command> Commands() const override;
  bool Translate(MSG& message) override;
  bool TranslateKey(WPARAM key);
  bool ClickMnemonic(MSG& message);
  void PlaceWindow();
  void LayOut() override;
  void ShowPage(unsigned page);
  void CheckName();
  void Accept();
  void CloseClicked();
  void JoinNetwork();

  core::Program& program_;
  const std::function<void()> shutDown_;

  const std::shared_ptr<UserPage> user_ = std::make_shared<UserPage>();
  const std::shared_ptr<InterfacePage> interface_ = std::make_shared<InterfacePage>();
  const std::shared_ptr<SecurityPage> security_ = std::make_shared<SecurityPage>(program_.Users());
  const std::shared_ptr<GroupsPage> groups_ = std::make_shared<GroupsPage>(program_.Users());
  const std::array<Page*, kPages> picOpt{user_.get(), interface_.get(), security_.get(), groups_.get()};

  toolkit::Toolbar tbOpt, TB;
  std::array<HWND, 2> lines_{};  // below the page selector and above the commands
  unsigned page_ = 0;
  bool accepting_ = false;  // events run while choices are applied
  bool renamed_ = false;    // the own name was chosen in this dialog, so it clashes with nobody any more
};

}  // namespace options
