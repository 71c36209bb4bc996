#include "ui/main/application.h"

#include "core/start_up.h"
#include "ui/toolkit/modal.h"
#include "ui/toolkit/screen.h"

namespace mainwindow {
namespace {

// Kept only after it was loaded: a window that could not be created must not block the next attempt.
template <class Form>
std::shared_ptr<Form> Loaded(std::shared_ptr<Form> form) {
  form->Load();
  return form;
}

}  // namespace

Application::Application()
    : sktBC_([this](std::string_view data) { DataArrived(data); }, [this] { messenger_.SendOwed(); }),
      messenger_(sktBC_),
      conversations_(users_, {users_.lvUsers, [this] { return users_.SelectedRecipients(); }}, messenger_),
      dispatcher_(users_, conversations_, messenger_) {
  users_.refreshChatWindows = [this] {
    for (const auto& chat : conversations_.ChatWindows()) chat->RefUserList();
  };
}

MainCommands Application::Commands() {
  return {.openComposer = [this](const std::string& recipients) { conversations_.OpenComposer(recipients); },
          .openChat = [this](const std::string& participants) { conversations_.StartChat(participants); },
          .showOptions = [this] { ShowOptions(false); },
          .showAbout = [this] { ShowAbout(); },
          .shutDown = [this] { core::ShutDown(*this); }};
}

void Application::DataArrived(std::string_view data) {
  dispatcher_.DataArrived(data);
  frmMain_->Wake();
}

void Application::ShowAbout() {
  if (!frmAbout_ || !frmAbout_->hwnd()) frmAbout_ = Loaded(std::make_shared<FrmAbout>());
  frmAbout_->Raise();
}

void Application::LoadMain() {
  if (frmMain_) return;
  frmMain_ = Loaded(std::make_shared<FrmMain>(users_, messenger_, Commands()));
}

void Application::MoveMain(const core::WindowBounds& bounds) {
  LoadMain();
  frmMain_->Move(bounds);
}

core::WindowBounds Application::RestoreMain() {
  LoadMain();
  return frmMain_->Restore();
}

void Application::OpenSocket() {
  messenger_.OpenSocket();
  if (frmMain_) frmMain_->CreateContents();
}

void Application::ShowSplash() {
  frmSplash_ = Loaded(std::make_shared<FrmSplash>());
  frmSplash_->ShowOnTop();
}

void Application::HideSplash() { frmSplash_->Show(SW_HIDE); }

core::WindowBounds Application::Screen() {
  const toolkit::ScreenSize screen = toolkit::WholeScreen();
  return {0, 0, screen.width.value, screen.height.value};
}

void Application::ShowOptionsAtStartUp() { ShowOptions(true); }

// The notification icon can request the dialog while it is open.
void Application::ShowOptions(bool atStartUp) {
  if (frmOpt_) return frmOpt_->Raise();
  const auto dialog = std::make_shared<options::FrmOpt>(*this, [this] { core::ShutDown(*this); });
  dialog->onDestroyed = [this] { frmOpt_.reset(); };
  dialog->atStartUp = atStartUp;
  frmOpt_ = Loaded(dialog);
  try {
    toolkit::RunModal(*dialog);
  } catch (...) {
    ::DestroyWindow(dialog->hwnd());
    throw;
  }
}

void Application::ShowTray() { frmMain_->ShowTray(); }

void Application::RemoveTray() {
  if (frmMain_) frmMain_->RemoveTray();
}

}  // namespace mainwindow
