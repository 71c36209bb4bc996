// The options dialog: what its window is told, the settings, Accept and Close.
#include "ui/options/frm_opt.h"

#include <algorithm>

#include "core/globals.h"
#include "core/language.h"
#include "core/message_box.h"
#include "core/numbers.h"
#include "core/runtime_error.h"
#include "core/sound.h"
#include "core/text.h"
#include "ui/options/frm_opt_parts.h"
#include "ui/options/names.h"
#include "ui/options/palette.h"
#include "ui/toolkit/modal.h"
#include "ui/toolkit/paint_colour.h"
#include "ui/toolkit/screen.h"

namespace options {
namespace {

using toolkit::operator""_dp;

constexpr UINT kNameLeft = WM_APP;  // posted, since no box may open while the focus is on its way
constexpr int kEmptyNameText = 2206, kQuestionTitleText = 9201;
constexpr char kFirstLanguage[] = "English";

class Flagged {
 public:
  explicit Flagged(bool& flag) : flag_(flag) { flag_ = true; }
  Flagged(const Flagged&) = delete;
  Flagged& operator=(const Flagged&) = delete;
  ~Flagged() { flag_ = false; }

 private:
  bool& flag_;
};

}  // namespace

LRESULT FrmOpt::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_NOTIFY:
      return Notified(lParam);
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
      return ColourControl(message, wParam, lParam);
    case kNameLeft:
      CheckName();
      return 0;
    case WM_CLOSE:
      CloseClicked();
      return 0;
    default:
      return Window::Handle(message, wParam, lParam);
  }
}

// The name and its preview have the chosen colour.
LRESULT FrmOpt::ColourControl(UINT message, WPARAM wParam, LPARAM lParam) {
  const auto control = reinterpret_cast<HWND>(lParam);
  if (control != txtName && control != lblPrevew) return Window::Handle(message, wParam, lParam);
  const auto dc = reinterpret_cast<HDC>(wParam);
  ::SetTextColor(dc, toolkit::TextColour(colour_));
  ::SetBkColor(dc, ::GetSysColor(COLOR_WINDOW));
  return reinterpret_cast<LRESULT>(::GetSysColorBrush(COLOR_WINDOW));
}

LRESULT FrmOpt::Notified(LPARAM lParam) {
  const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
  if (header.hwndFrom == tvGroups.hwnd() && header.code == NM_CUSTOMDRAW)
    return GroupTree::Paint(*reinterpret_cast<NMTVCUSTOMDRAW*>(lParam));
  const bool choices = header.hwndFrom == lvSnd.hwnd() || header.hwndFrom == lvBlock.hwnd();
  if (choices && header.code == NM_CUSTOMDRAW) return ChoiceList::Paint(*reinterpret_cast<NMLVCUSTOMDRAW*>(lParam));
  if (header.hwndFrom != lvCol) return 0;
  if (header.code == NM_CUSTOMDRAW) return DrawSwatchItem(lParam);
  // The frames of our own reach beyond what the list itself draws anew.
  if (header.code == LVN_ITEMCHANGED || header.code == NM_SETFOCUS || header.code == NM_KILLFOCUS)
    ::InvalidateRect(lvCol, nullptr, TRUE);
  if (header.code == LVN_ITEMCHANGED) {
    const auto& change = *reinterpret_cast<const NMLISTVIEW*>(lParam);
    if ((change.uNewState & ~change.uOldState) & LVIS_SELECTED) lvCol_ItemClick(change.iItem);
  }
  return 0;
}

// A selected picture would be tinted, and with it the very colour that is chosen; a frame says the same.
LRESULT FrmOpt::DrawSwatchItem(LPARAM lParam) const {
  const auto& draw = *reinterpret_cast<const NMLVCUSTOMDRAW*>(lParam);
  if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) return CDRF_DODEFAULT;
  const int index = static_cast<int>(draw.nmcd.dwItemSpec);
  RECT place{};
  ListView_GetItemRect(lvCol, index, &place, LVIR_ICON);
  int width = 0, height = 0;
  ::ImageList_GetIconSize(imlCol.get(), &width, &height);
  RECT swatch{0, 0, width, height};
  ::OffsetRect(&swatch, (place.left + place.right - width) / 2, (place.top + place.bottom - height) / 2);
  ::ImageList_Draw(imlCol.get(), index, draw.nmcd.hdc, swatch.left, swatch.top, ILD_NORMAL);
  if (ListView_GetItemState(lvCol, index, LVIS_SELECTED)) {
    for (int i = toolkit::Px(1_dp); i <= toolkit::Px(3_dp); ++i) {
      RECT frame = swatch;
      ::InflateRect(&frame, i, i);
      ::FrameRect(draw.nmcd.hdc, &frame, ::GetSysColorBrush(COLOR_HIGHLIGHT));
    }
  }
  if (::GetFocus() == lvCol && ListView_GetItemState(lvCol, index, LVIS_FOCUSED)) {
    ::InflateRect(&swatch, toolkit::Px(5_dp), toolkit::Px(5_dp));
    ::DrawFocusRect(draw.nmcd.hdc, &swatch);
  }
  return CDRF_SKIPDEFAULT;
}

std::span<const toolkit::Command> FrmOpt::Commands() const {
  static const toolkit::Command kCommands[] = {
      {kUserButton, kPages, &FrmOpt::tbOpt_ButtonClick},
      {kAcceptButton, &FrmOpt::Accept},
      {kCloseButton, &FrmOpt::CloseClicked},
      {kNameBox, &FrmOpt::txtName_Change, EN_CHANGE},
      {kNameBox, &FrmOpt::txtName_GotFocus, EN_SETFOCUS},
      {kNameBox, &FrmOpt::txtName_LostFocus, EN_KILLFOCUS},
      {kTestButton, &FrmOpt::TestSound},
      {kBlockBox, &FrmOpt::txtBlock_GotFocus, EN_SETFOCUS},
      {kBlockBox, &FrmOpt::BoxLeft, EN_KILLFOCUS},
      {kBlockEnter, &FrmOpt::AddBlock},
      {kBlockButton, &FrmOpt::AddBlock},
      {kUnblockButton, &FrmOpt::RemoveBlock},
      {kGroupBox, &FrmOpt::txtGroups_GotFocus, EN_SETFOCUS},
      {kGroupBox, &FrmOpt::BoxLeft, EN_KILLFOCUS},
      {kGroupEnter, &FrmOpt::cmdGroups_Click},
      {kNewGroupButton, &FrmOpt::NewGroup_Click},
      {kAddMemberButton, &FrmOpt::AddMember_Click},
      {kRemoveNodeButton, &FrmOpt::RemoveNode_Click},
  };
  return kCommands;
}

void FrmOpt::tbOpt_ButtonClick(unsigned page) { ShowPage(page); }

void FrmOpt::txtName_GotFocus() { BoxEntered(txtName, nullptr); }

void FrmOpt::txtBlock_GotFocus() { BoxEntered(txtBlock, cmdDAdd); }

void FrmOpt::txtGroups_GotFocus() { BoxEntered(txtGroups, cmdGroups); }

void FrmOpt::BoxEntered(HWND box, HWND button) {
  ::SendMessageA(box, EM_SETSEL, 0, -1);
  default_ = button;
}

void FrmOpt::BoxLeft() { default_ = nullptr; }

void FrmOpt::txtName_LostFocus() {
  BoxLeft();
  ::PostMessageA(hwnd(), kNameLeft, 0, 0);
}

void FrmOpt::TestSound() { core::PlayAlertSound(SelectedSound()); }

void FrmOpt::ShowPage(std::size_t page) {
  // The selector keeps the keyboard for whoever walks through the pages there.
  const bool enters = ::GetFocus() != tbOpt.hwnd();
  const auto former = std::exchange(page_, page);
  ::SendMessageA(tbOpt.hwnd(), TB_CHECKBUTTON, static_cast<WPARAM>(kUserButton) + page, TRUE);
  picOpt[page]->Show(SW_SHOW);
  const std::array<HWND, kPages> first{txtName, tbPos, txtBlock, txtGroups};
  if (enters && ::IsWindowVisible(hwnd())) ::SetFocus(first[page]);
  if (former != page) picOpt[former]->Show(SW_HIDE);
}

bool FrmOpt::Translate(MSG& message) {
  if (message.message == WM_SYSCHAR) return ClickMnemonic(static_cast<char>(message.wParam));
  return message.message == WM_KEYDOWN && TranslateKey(message);
}

bool FrmOpt::TranslateKey(const MSG& key) {
  const bool ctrl = toolkit::KeyDown(VK_CONTROL);
  const bool back = key.wParam == VK_PRIOR || (key.wParam == VK_TAB && toolkit::KeyDown(VK_SHIFT));
  if (ctrl && (key.wParam == VK_TAB || key.wParam == VK_PRIOR || key.wParam == VK_NEXT)) {
    ShowPage((page_ + (back ? kPages - 1 : 1)) % kPages);
    return true;
  }
  if (key.wParam != VK_RETURN || !default_) return false;
  return RunCommand(static_cast<unsigned>(::GetDlgCtrlID(default_)));
}

// Buttons of the page and of the window may share a letter. The page's come first while there is something to do for
// them in the page's box.
bool FrmOpt::ClickMnemonic(char letter) {
  const std::array<toolkit::Toolbar*, kPages> tools{nullptr, &tbSnd, &tbSec, &tbGroups};
  toolkit::Toolbar* const own = tools[page_];
  const HWND box = page_ == kSecurity ? txtBlock : page_ == kGroups ? txtGroups : nullptr;
  const bool ownFirst = box && !toolkit::TrimmedTextOf(box).empty();
  if (ownFirst && own->ClickMnemonic(letter)) return true;
  if (TB.ClickMnemonic(letter) || tbOpt.ClickMnemonic(letter)) return true;
  return own && own->ClickMnemonic(letter);
}

void FrmOpt::InputSets() {
  ::SetWindowTextA(txtName, core::gUserName.c_str());
  colour_ = core::gColour;
  SetCol(core::gColour);
  SetPos(core::gPopPos);
  SelectSound(core::gSound);
  ::SetWindowTextA(lblHeight, core::PlainText(core::gAlertHeight).c_str());
  ::SendMessageA(chkStartUp, BM_SETCHECK, core::gRunAtLogon == 0 ? BST_UNCHECKED : BST_CHECKED, 0);
  const auto* const language = std::ranges::find(kLanguages, core::gLanguage);
  const auto index = language == std::end(kLanguages) ? -1 : language - std::begin(kLanguages);
  ::SendMessageA(CMBlang, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  FillBlocked();
  RefBloc();
  tvGroups.Fill(GroupsOf(program_.Users().GroupLines()));
}

void FrmOpt::WriteSets() {
  Choices choices{
      .language = SelectedLanguage(),
      .name = toolkit::TrimmedTextOf(txtName),
      .runAtLogon = ::SendMessageA(chkStartUp, BM_GETCHECK, 0, 0) == BST_CHECKED ? std::int16_t{1} : std::int16_t{0},
      .blocked = lvBlock.Texts(),
      .groups = tvGroups.Groups()};
  const int swatch = ListView_GetNextItem(lvCol, -1, LVNI_SELECTED);
  if (swatch >= 0) choices.colour = kPalette[static_cast<std::size_t>(swatch)].colour;
  if (const int position = PressedPos()) choices.position = static_cast<std::int16_t>(position);
  if (lvSnd.Selected() >= 0) choices.sound = SelectedSound();
  renamed_ = true;
  Apply(choices, program_);
}

void FrmOpt::SetPos(int position) {
  for (int i = 0; i < 4; ++i)
    ::SendMessageA(tbPos, TB_CHECKBUTTON, static_cast<WPARAM>(kFirstPosition + i), i + 1 == position);
}

int FrmOpt::PressedPos() const {
  for (int i = 0; i < 4; ++i)
    if (::SendMessageA(tbPos, TB_ISBUTTONCHECKED, static_cast<WPARAM>(kFirstPosition + i), 0)) return i + 1;
  return 0;
}

void FrmOpt::SetCol(std::int32_t colour) {
  const auto* const found = std::ranges::find(kPalette, colour, &Swatch::colour);
  if (found == kPalette.end()) return;
  const int index = static_cast<int>(found - kPalette.begin());
  ListView_SetItemState(lvCol, index, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
  ListView_EnsureVisible(lvCol, index, FALSE);
  lvCol_ItemClick(index);
}

void FrmOpt::SelectSound(const std::string& key) {
  const auto found = std::ranges::find(sounds_, key, &Sound::key);
  if (found != sounds_.end()) lvSnd.Select(static_cast<int>(found - sounds_.begin()));
}

std::string FrmOpt::SelectedSound() const {
  const int selected = lvSnd.Selected();
  return selected < 0 ? std::string("(S)") : sounds_[static_cast<std::size_t>(selected)].key;
}

std::optional<std::string> FrmOpt::SelectedLanguage() const {
  const auto index = ::SendMessageA(CMBlang, CB_GETCURSEL, 0, 0);
  if (index < 0) return std::nullopt;
  return kLanguages[index];
}

void FrmOpt::lvCol_ItemClick(int index) {
  colour_ = kPalette[static_cast<std::size_t>(index)].colour;
  ::InvalidateRect(txtName, nullptr, TRUE);
  ::InvalidateRect(lblPrevew, nullptr, TRUE);
}

void FrmOpt::txtName_Change() { ::SetWindowTextA(lblPrevew, toolkit::TextOf(txtName).c_str()); }

// Only within the dialog: nobody is held back who turns to another program.
void FrmOpt::CheckName() {
  const HWND focus = ::GetFocus();
  if (accepting_ || focus == txtName || !::IsChild(hwnd(), focus)) return;
  const std::string text = toolkit::TextOf(txtName), name(core::Trim(text));
  if (name != text) ::SetWindowTextA(txtName, name.c_str());
  if (!name.empty()) return;
  ShowPage(kUser);
  core::ShowBox({.text = core::GetText(kEmptyNameText), .icon = core::BoxIcon::Critical});
  ::SetFocus(txtName);
}

void FrmOpt::Accept() {
  if (accepting_) return;
  const Flagged accepting(accepting_);
  if (const int refusal = RefusalOf(toolkit::TrimmedTextOf(txtName), program_.Users(), atStartUp && !renamed_)) {
    core::ShowBox({.text = core::GetText(refusal)});
    ShowPage(kUser);
    ::SetFocus(txtName);
    return;
  }
  ChangeLanguage();
  WriteSets();
  toolkit::CloseModal(*this);
}

void FrmOpt::CloseClicked() {
  if (accepting_) return;
  if (atStartUp) return shutDown_();
  toolkit::CloseModal(*this);
}

// The question is put in the language that is offered, and in English for whoever chose it by mistake. A language file
// that cannot be read leaves everything as it was.
void FrmOpt::ChangeLanguage() {
  const auto chosen = SelectedLanguage();
  if (!chosen || *chosen == core::gLanguage) return;
  const int index = static_cast<int>(::SendMessageA(CMBlang, CB_GETCURSEL, 0, 0));
  std::string question = core::GetText(kQuestionTexts[index]);
  if (*chosen != kFirstLanguage) question += "\r\n\r\n" + core::GetText(kQuestionTexts[0]);
  if (!core::AskBox({.text = question, .title = core::GetText(kQuestionTitleText)})) return;
  const std::string former = std::exchange(core::gLanguage, *chosen);
  try {
    core::LoadLang();
  } catch (const core::RuntimeError&) {
    core::gLanguage = former;
    throw;
  }
  SetLanOfAll();
}

}  // namespace options
