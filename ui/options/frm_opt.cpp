#include "ui/options/frm_opt.h"

#include <algorithm>

#include "core/language.h"
#include "core/message_box.h"
#include "core/scoped_flag.h"
#include "res/pictures.h"
#include "ui/options/option_values.h"
#include "ui/toolkit/modal.h"
#include "ui/toolkit/screen.h"

namespace options {
namespace {

using toolkit::AreaAt;
using toolkit::Px;
using toolkit::SetArea;
using toolkit::operator""_dp;

constexpr toolkit::ToolButton kPageButtons[] = {
    {kUserButton, {2002, "&User"}, res::kToolbarUser},
    {kInterfaceButton, {2003, "&Interface"}, res::kToolbarInterface},
    {kSecurityButton, {2004, "&Securety"}, res::kToolbarSecurity},
    {kGroupsButton, {2005, "&Groups"}, res::kToolbarGroups},
};
constexpr toolkit::ToolButton kCommandButtons[] = {
    {kAcceptButton, {2006, "&Accept"}, res::kToolbarAccept},
    {kCloseButton, {2007, "&Close"}, res::kToolbarClose},
};

constexpr int kEmptyNameText = 2206;

constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD kExStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

// The frame height is that of caption and border.
constexpr toolkit::Twips kPageWidth = 450_dp, kPageHeight = 260_dp, kFrameHeight{400};

}  // namespace

void FrmOpt::Load() {
  // Without a visible owner the window gets a button of its own in the task bar.
  const HWND active = ::GetActiveWindow(), owner = ::IsWindowVisible(active) ? active : nullptr;
  Create({"frmOpt", kStyle, kExStyle, COLOR_BTNFACE}, {2001, "Options - Quillon"}, {}, owner);
  AddToolbar(tbOpt, kPageButtons);
  tbOpt.KeepInOneLine();
  tbOpt.MakeRadio();
  for (Page* page : picOpt) page->Load(hwnd());
  for (HWND& line : lines_) line = AddControl("STATIC", "", SS_ETCHEDHORZ);
  AddToolbar(TB, kCommandButtons);
  TB.KeepInOneLine();
  SetLan();
  PlaceWindow();
  for (Page* page : picOpt) page->Fill();
  LayOut();
  InputSets();
  ShowPage(0);
  ::SetFocus(user_->FirstControl());
}

// In the middle of the work area.
void FrmOpt::PlaceWindow() {
  const SIZE pages = tbOpt.NaturalSize(), commands = TB.NaturalSize();
  RECT frame{0, 0, std::max(Px(kPageWidth), static_cast<int>(std::max(pages.cx, commands.cx))), 0};
  ::AdjustWindowRectEx(&frame, kStyle, FALSE, kExStyle);
  const int width = frame.right - frame.left;
  const int height = pages.cy + Px(kPageHeight) + commands.cy + Px(kFrameHeight);
  toolkit::SetArea(hwnd(), toolkit::CentredIn(toolkit::WorkAreaPixels(), width, height));
}

// The pages have the same height whatever frame the system gives the window. Under a thick frame the command bar covers
// some of the margin at their lower end.
void FrmOpt::LayOut() {
  const toolkit::Area client = toolkit::ClientAreaOf(hwnd());
  const int selector = tbOpt.Place(client.right);
  for (Page* page : picOpt) {
    SetArea(page->hwnd(), AreaAt(0, selector, client.right, Px(kPageHeight)));
    page->LayOut();
  }
  const int commands = TB.Place(client.right);
  ::SetWindowPos(TB.hwnd(), HWND_TOP, 0, client.bottom - commands, client.right, commands, SWP_NOACTIVATE);
  SetArea(lines_[0], AreaAt(0, selector, client.right, 2));
  SetArea(lines_[1], AreaAt(0, client.bottom - commands - Px(3_dp), client.right, 2));
  for (const HWND line : lines_) BringToTop(line);
}

LRESULT FrmOpt::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kNameLeft:
      CheckName();
      return 0;
    case WM_CLOSE:
      OnClose();
      return 0;
    default:
      return Window::Handle(message, wParam, lParam);
  }
}

std::span<const toolkit::Command> FrmOpt::Commands() const {
  static const toolkit::Command kCommands[] = {
      {kUserButton, kPages, &FrmOpt::ShowPage},
      {kAcceptButton, &FrmOpt::Accept},
      {kCloseButton, &FrmOpt::OnClose},
  };
  return kCommands;
}

bool FrmOpt::Translate(MSG& message) {
  if (message.message == WM_SYSCHAR) return ClickMnemonic(message);
  return message.message == WM_KEYDOWN && TranslateKey(message.wParam);
}

bool FrmOpt::TranslateKey(WPARAM key) {
  const bool back = key == VK_PRIOR || (key == VK_TAB && toolkit::KeyDown(VK_SHIFT));
  if (toolkit::KeyDown(VK_CONTROL) && (key == VK_TAB || key == VK_PRIOR || key == VK_NEXT)) {
    ShowPage((page_ + (back ? kPages - 1 : 1)) % kPages);
    return true;
  }
  return key == VK_RETURN && picOpt[page_]->OnEnter();
}

bool FrmOpt::ClickMnemonic(MSG& message) {
  Page& page = *picOpt[page_];
  if (page.OwnsMnemonics() && page.Translate(message)) return true;
  return Window::Translate(message) || page.Translate(message);
}

void FrmOpt::ShowPage(unsigned page) {
  // A user who steps through the selector with the arrow keys keeps the focus there.
  const bool enters = ::GetFocus() != tbOpt.hwnd();
  const unsigned former = std::exchange(page_, page);
  tbOpt.Press(kUserButton + static_cast<int>(page));
  picOpt[page]->Show(SW_SHOW);
  if (enters && ::IsWindowVisible(hwnd())) ::SetFocus(picOpt[page]->FirstControl());
  if (former != page) picOpt[former]->Show(SW_HIDE);
}

void FrmOpt::InputSets() {
  for (Page* page : picOpt) page->InputSets();
}

void FrmOpt::WriteSets() {
  renamed_ = true;
  const auto writeOthers = [this] {
    interface_->WriteSets();
    security_->WriteSets();
    groups_->WriteSets();
  };
  ApplySets(program_, {.language = [this] { interface_->WriteLanguage(); },
                       .user = [this] { user_->WriteSets(); },
                       .others = writeOthers});
}

void FrmOpt::CheckName() {
  if (accepting_ || !user_->IsNameMissing()) return;
  ShowPage(0);
  core::ShowBox({.text = core::GetText(kEmptyNameText), .icon = core::BoxIcon::Critical});
  ::SetFocus(user_->FirstControl());
}

void FrmOpt::Accept() {
  if (accepting_) return;
  const core::ScopedFlag accepting(accepting_);
  if (const int refusal = user_->Refusal(program_.Users(), atStartUp && !renamed_)) {
    core::ShowBox({.text = core::GetText(refusal)});
    ShowPage(0);
    ::SetFocus(user_->FirstControl());
    return;
  }
  interface_->ChangeLanguage();
  WriteSets();
  toolkit::CloseModal(*this);
}

void FrmOpt::OnClose() {
  if (accepting_) return;
  if (atStartUp) return shutDown_();
  toolkit::CloseModal(*this);
}

}  // namespace options
