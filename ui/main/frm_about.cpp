#include "ui/main/frm_about.h"

#include <array>

#include "core/globals.h"
#include "core/process.h"
#include "ui/main/main_menu.h"
#include "ui/toolkit/links.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/screen.h"

namespace mainwindow {
namespace {

using toolkit::AreaAt;
using toolkit::Px;
using toolkit::operator""_dp;

constexpr char kLinkClass[] = "SysLink";  // the headers name it in wide characters only
constexpr int kIconId = 10, kLinkId = 11;
constexpr toolkit::Twips kWidth = 340_dp, kHeight = 200_dp, kMargin = 16_dp, kIconSide = 48_dp;  // of the client area

toolkit::Font NameFont() {
  LOGFONTA font{};
  ::GetObjectA(toolkit::BoldDialogFont(), sizeof font, &font);
  font.lfHeight = font.lfHeight * 3 / 2;
  return toolkit::Font(::CreateFontIndirectA(&font));
}

}  // namespace

void FrmAbout::Load() {
  constexpr toolkit::WindowStyle style{"frmAbout", WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN,
                                       WS_EX_DLGMODALFRAME};
  Create(style, {7001, "About Quillon"}, toolkit::CentredAround(style, Px(kWidth), Px(kHeight)));

  icon_ = toolkit::LoadProgramIcon(Px(kIconSide));
  nameFont_ = NameFont();
  constexpr DWORD label = SS_LEFTNOWORDWRAP | SS_NOPREFIX;
  picIcon = AddControl("STATIC", "", SS_OWNERDRAW, 0, kIconId);
  lblName = AddControl("STATIC", core::kProgramName, label);
  ::SendMessageA(lblName, WM_SETFONT, reinterpret_cast<WPARAM>(nameFont_.get()), FALSE);
  lblVersion = AddControl("STATIC", "", label);
  AddCaption({7002, "Version"},
             [this](const std::string& word) { ::SetWindowTextA(lblVersion, (word + " " + core::gVersion).c_str()); });
  lblMaker = AddControl("STATIC", {7003, "Made by Vextant"}, label);
  lblRights = AddControl("STATIC", {7004, "All rights reserved."}, label);
  lnkWeb = AddControl(kLinkClass, "", WS_TABSTOP, 0, kLinkId);
  AddCaption({7005, "Visit our web site"},
             [this](const std::string& text) { ::SetWindowTextA(lnkWeb, ("<a>" + text + "</a>").c_str()); });
  cmdClose = AddControl("BUTTON", {7006, "&Close"}, WS_TABSTOP | BS_DEFPUSHBUTTON, 0, IDOK);
  LayOut();
  SetLan();
  FocusFirst(cmdClose);
}

void FrmAbout::LayOut() {
  const int left = Px(kMargin + kIconSide + kMargin), width = Px(kWidth - kMargin) - left;
  toolkit::SetArea(picIcon, AreaAt(Px(kMargin), Px(kMargin), Px(kIconSide), Px(kIconSide)));
  const std::array<std::pair<HWND, toolkit::Twips>, 5> lines{
      {{lblName, 14_dp}, {lblVersion, 42_dp}, {lblMaker, 66_dp}, {lblRights, 86_dp}, {lnkWeb, 116_dp}}};
  for (const auto& [line, top] : lines)
    toolkit::SetArea(line, AreaAt(left, Px(top), width, Px(line == lblName ? 26_dp : 18_dp)));
  toolkit::SetArea(cmdClose, AreaAt(Px(kWidth - kMargin - 90_dp), Px(kHeight - kMargin - 25_dp), Px(90_dp), Px(25_dp)));
}

std::span<const toolkit::Command> FrmAbout::Commands() const {
  static const toolkit::Command kCommands[] = {{IDOK, &FrmAbout::Close}};
  return kCommands;
}

// Some link controls delete their font, but this one is shared by all windows. Not only in WM_DESTROY, which a window
// that fails to open does not receive.
void FrmAbout::ResetFont() const {
  if (hwnd()) ::SendMessageA(lnkWeb, WM_SETFONT, 0, FALSE);
}

LRESULT FrmAbout::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_DRAWITEM: {
      const auto& request = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
      ::FillRect(request.hDC, &request.rcItem, ::GetSysColorBrush(COLOR_BTNFACE));
      ::DrawIconEx(request.hDC, 0, 0, icon_.get(), Px(kIconSide), Px(kIconSide), 0, nullptr, DI_NORMAL);
      return TRUE;
    }
    case WM_NOTIFY: {
      const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
      if (header.idFrom == kLinkId && (header.code == NM_CLICK || header.code == NM_RETURN))
        toolkit::OpenLink(kWebLinks[0]);
      return 0;
    }
    case WM_DESTROY:
      ResetFont();
      return 0;
    default:
      return Window::Handle(message, wParam, lParam);
  }
}

}  // namespace mainwindow
