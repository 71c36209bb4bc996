// The menus of the chat window: what each command does, and the names of the users online.
#include "ui/conversation/frm_chat.h"

#include <algorithm>

#include "core/files.h"
#include "core/language.h"
#include "core/sound.h"
#include "core/text.h"
#include "ui/conversation/clipboard.h"
#include "ui/toolkit/menu/menu_items.h"
#include "ui/toolkit/save/frm_save.h"
#include "ui/toolkit/screen.h"

namespace conversation {
namespace {

using namespace chatmenu;
using toolkit::Px;
using toolkit::operator""_dp;

constexpr toolkit::Caption kExportTitle{3202, "Export Chat"};

// The limit of an owner-drawn item's caption.
constexpr std::size_t kMaxShown = 190;

// The approximate overhead of an entry, rounded up.
constexpr toolkit::Twips kEntryHeight = 24_dp, kEntryWidth = 60_dp;

// A tab would start a shortcut text, and other control bytes would show as boxes.
std::string Cleaned(const std::string& name) {
  std::string shown(core::LeadingCharacters(name, kMaxShown));
  std::ranges::replace_if(
      shown, [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  return name.size() > kMaxShown ? shown + "..." : shown;
}

// The group's first and last name, truncated.
std::string GroupCaption(const std::string& first, const std::string& last) {
  const auto part = [](const std::string& name) { return Cleaned(std::string(core::LeadingCharacters(name, 80))); };
  return toolkit::LiteralCaption(part(first) + " - " + part(last));
}

// The number of entries per column, so that all fit on the screen. If they do not, a single column, which can be
// scrolled.
std::size_t EntriesInColumn(const std::vector<std::string>& names, std::size_t begin, std::size_t end) {
  const auto work = toolkit::WorkAreaPixels();
  const auto rows = static_cast<std::size_t>(std::max(work.Height() / Px(kEntryHeight) - 6, 8));
  LONG widest = 0;
  for (std::size_t i = begin; i < end; ++i)
    widest = std::max(widest, toolkit::MeasureText(toolkit::DialogFont(), Cleaned(names[i]).c_str()).cx);
  const std::size_t columns = (end - begin + rows - 1) / rows;
  const bool fits = static_cast<LONG>(columns) * (widest + Px(kEntryWidth)) <= work.Width();
  return fits ? rows : end - begin;
}

void BreakColumn(HMENU menu, int position) {
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_FTYPE;
  info.fType = MFT_STRING | MFT_MENUBARBREAK;
  ::SetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info);
}

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

void UsersMenu::Fill(const std::vector<std::string>& names) {
  Empty();
  names_ = &names;
  groups_ = GroupsOf(names.size());
  auto place = *menu_.Find(mnuRemove);
  if (groups_.size() == 1) {
    AddEntries(place, 0, names.size());
  } else {
    for (std::size_t i = 0; i < groups_.size(); ++i, ++place.position) {
      const std::size_t end = i + 1 < groups_.size() ? groups_[i + 1] : names.size();
      subMenus_.push_back(menu_.InsertSubMenu(place, mnuGroup, GroupCaption(names[groups_[i]], names[end - 1])));
    }
  }
  menu_.ItemsChanged();
}

void UsersMenu::Opens(HMENU menu) {
  const auto found = std::ranges::find(subMenus_, menu);
  if (found == subMenus_.end()) return;
  for (const HMENU subMenu : subMenus_)
    while (::DeleteMenu(subMenu, 0, MF_BYPOSITION)) {
    }
  const auto group = static_cast<std::size_t>(found - subMenus_.begin());
  AddEntries({menu, 0}, groups_[group], group + 1 < groups_.size() ? groups_[group + 1] : names_->size());
  menu_.ItemsChanged();
}

const std::string* UsersMenu::NameOf(unsigned index) const {
  return begin_ + index < end_ ? &(*names_)[begin_ + index] : nullptr;
}

// Removes everything between the heading and mnuRemove, including sub-menus.
void UsersMenu::Empty() {
  const auto heading = menu_.Find(mnuOnlineSep), remove = menu_.Find(mnuRemove);
  for (int position = remove->position; --position > heading->position;)
    ::DeleteMenu(heading->menu, static_cast<UINT>(position), MF_BYPOSITION);
  subMenus_.clear();
  begin_ = end_ = 0;
}

void UsersMenu::AddEntries(const toolkit::ItemPosition& place, std::size_t begin, std::size_t end) {
  const std::size_t column = EntriesInColumn(*names_, begin, end);
  for (std::size_t i = 0; i < end - begin; ++i) {
    const int position = place.position + static_cast<int>(i);
    const std::string caption = toolkit::LiteralCaption(Cleaned((*names_)[begin + i]));
    menu_.Insert({place.menu, position}, mnuUser + static_cast<unsigned>(i), caption);
    if (i > 0 && i % column == 0) BreakColumn(place.menu, position);
  }
  begin_ = begin;
  end_ = end;
}

}  // namespace conversation
