// The commands of the chat window's menus, and the menu of the users online.
#include "core/files.h"
#include "core/globals.h"
#include "core/language.h"
#include "core/sound.h"
#include "core/text.h"
#include "ui/conversation/clipboard.h"
#include "ui/conversation/frm_chat.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/save/frm_save.h"

namespace conversation {
namespace {

using namespace chatmenu;

constexpr toolkit::Caption kExportTitle{3202, "Export Chat"};

}  // namespace

void FrmChat::OnMenuOpening(HMENU menu) {
  mnuUser_.Opens(menu);
  const auto remove = menu_.Find(mnuRemove);
  if (!remove || remove->menu != menu) return;
  menu_.Enable(mnuRemove, participants_.Rows().SelectedCount() > 0);
  if (!usersOnlineStale_) return;
  usersOnlineStale_ = false;
  if (lstUsers.Take(mainList_.lvUsers)) mnuUser_.Fill(lstUsers.Names());
}

std::span<const toolkit::Command> FrmChat::Commands() const {
  static const toolkit::Command kCommands[] = {
      {IDOK, &FrmChat::Send},  // of cmdDSnd
      {tbSend, &FrmChat::Send},
      {mnuExportT, &FrmChat::mnuExportT_Click},
      {mnuExportC, &FrmChat::mnuExportC_Click},
      {mnuOnTop, &FrmChat::mnuOnTop_Click},
      {mnuCLS, &FrmChat::mnuCLS_Click},
      {mnuViewStat, &FrmChat::mnuViewStat_Click},
      {mnuTime, &FrmChat::mnuTime_Click},
      {mnuClose, &FrmChat::Close},
      {mnuAdd, &FrmChat::mnuAdd_Click},
      {mnuUser, kMaxInMenu, &FrmChat::mnuUser_Click},
      {mnuRemove, &FrmChat::mnuRemove_Click},
  };
  return kCommands;
}

// Lines that arrive while the save dialog is open are saved too.
void FrmChat::mnuExportT_Click() {
  const std::string path = toolkit::AskSaveName(kExportTitle);
  if (!hwnd()) return;
  const std::string lowerCase = core::LowerCase(path);
  if (lowerCase.ends_with("txt"))
    core::WriteFileSafely(path, [this](const core::Sink& sink) { WritePlainText(txtMsg.Said(), sink); });
  if (lowerCase.ends_with("rtf"))
    core::WriteFileSafely(path, [this](const core::Sink& sink) { txtMsg.WriteRichText(sink); });
}

void FrmChat::mnuExportC_Click() {
  std::string markup;
  txtMsg.WriteRichText([&](std::string_view piece) { markup += piece; });
  CopyText(hwnd(), markup);
}

void FrmChat::mnuOnTop_Click() {
  onTop_ = !onTop_;
  menu_.Check(mnuOnTop, onTop_);
  toolkit::SetTopMost(hwnd(), onTop_);
}

void FrmChat::mnuCLS_Click() { txtMsg.Clear(); }

void FrmChat::mnuViewStat_Click() {
  statVisible_ = !statVisible_;
  menu_.Check(mnuViewStat, statVisible_);
  LayOut();
}

void FrmChat::mnuTime_Click() {
  addTime_ = !addTime_;
  menu_.Check(mnuTime, addTime_);
}

// Adds the users selected in the main window; a group adds its members that are online.
void FrmChat::mnuAdd_Click() {
  const std::string selected = mainList_.selectedRecipients();
  if (selected.empty()) return core::Beep();
  participants_.AddUsers(selected);
  UsersChanged();
}

// By index, because a menu caption may not show the whole name.
void FrmChat::mnuUser_Click(unsigned index) {
  const std::string* const name = mnuUser_.NameOf(index);
  if (name) AddUser(std::string(*name));
}

void FrmChat::mnuRemove_Click() {
  std::vector<std::string> selected;
  for (const toolkit::ListRow* row : participants_.Rows().Selected()) selected.push_back(row->text);
  participants_.RemoveUsers(selected);
  UsersChanged();
}

}  // namespace conversation
