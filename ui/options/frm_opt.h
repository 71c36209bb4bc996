// The options dialog: a page selector, four pages, a command bar. The controls hold copies of the settings: Accept
// applies them, Close discards them.
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

  // Set before the dialog is shown at start-up: the user's name is in use, and closing the dialog ends the program.
  bool atStartUp = false;

  // Creates the window, hidden, centred in the work area, with the settings in its controls.
  void Load();

  // Copies the settings into the controls.
  void InputSets();

  // Copies the controls into the settings and applies them (ApplySets).
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
  void OnClose();

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
  bool accepting_ = false;  // pending events run while the settings are applied
  bool renamed_ = false;    // the name was chosen in this dialog, so the conflict at start-up is over
};

}  // namespace options
