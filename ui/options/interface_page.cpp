#include "ui/options/interface_page.h"

#include <algorithm>
#include <utility>

#include "core/files.h"
#include "core/globals.h"
#include "core/language.h"
#include "core/message_box.h"
#include "core/runtime_error.h"
#include "core/sound.h"
#include "res/pictures.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/save/disk_folder.h"
#include "ui/toolkit/save/save_name.h"
#include "ui/toolkit/screen.h"

namespace options {
namespace {

using toolkit::AreaAt;
using toolkit::LineHeight;
using toolkit::Px;
using toolkit::SetArea;
using toolkit::operator""_dp;

constexpr toolkit::ToolButton kSoundButtons[] = {
    {kTestButton, {2013, "&Test"}, res::kToolbarTest},
};

// The languages offered, whatever the language file contains, and for each the question whether to switch to it.
constexpr const char* kLanguages[] = {"English",
                                      "Fran\xE7"
                                      "ais",
                                      "Deutsch", "Espa\xF1ol"};
constexpr int kQuestionTexts[] = {10300, 10301, 10302, 10303};
static_assert(std::size(kQuestionTexts) == std::size(kLanguages));
constexpr int kQuestionTitleText = 9201;

// The corners of the screen, as the menu calls them, for screen readers.
constexpr toolkit::Caption kPositionNames[] = {
    {1117, "|Move window to top left|Top &Left"},
    {1118, "|Move window to top right|Top &Right"},
    {1119, "|Move window to bottom left|Bottom L&eft"},
    {1120, "|Move window to bottom right|Bottom R&ight"},
};
constexpr int kPositions = static_cast<int>(std::size(kPositionNames));
constexpr toolkit::Twips kPositionWidth = 36_dp, kPositionHeight = 27_dp, kDropHeight = 200_dp;

enum SoundPicture : int { kSilencePicture, kBeepPicture, kWavePicture };

int WidthOf(HWND label) { return toolkit::MeasureText(toolkit::DialogFont(), toolkit::TextOf(label)).cx; }

void Fill(HDC dc, const RECT& place, int systemColour) { ::FillRect(dc, &place, ::GetSysColorBrush(systemColour)); }

RECT QuarterOf(const RECT& whole, int position) {
  const LONG middleX = (whole.left + whole.right) / 2, middleY = (whole.top + whole.bottom) / 2;
  const bool right = position % 2 == 0, bottom = position > 2;
  return {right ? middleX : whole.left, bottom ? middleY : whole.top, right ? whole.right : middleX,
          bottom ? whole.bottom : middleY};
}

// Draws a screen with one quarter highlighted: 1 top left, 2 top right, 3 bottom left, 4 bottom right.
void DrawPosition(HDC dc, const RECT& screen, int position) {
  Fill(dc, screen, COLOR_WINDOWTEXT);
  RECT inside = screen;
  const int frame = Px(1_dp);
  ::InflateRect(&inside, -frame, -frame);
  Fill(dc, inside, COLOR_HIGHLIGHT);
  Fill(dc, QuarterOf(inside, position), COLOR_HIGHLIGHTTEXT);
}

void AddIcon(HIMAGELIST list, res::Strip strip, int picture, int side) {
  ::ImageList_ReplaceIcon(list, -1, toolkit::LoadPicture(strip, picture, side).get());
}

toolkit::ImageList SoundPictures() {
  const int side = ::GetSystemMetrics(SM_CXSMICON);
  toolkit::ImageList list(::ImageList_Create(side, side, ILC_COLOR32 | ILC_MASK, 3, 0));
  AddIcon(list.get(), res::Strip::Menu, res::kMenuBlock, side);
  AddIcon(list.get(), res::Strip::Menu, res::kMenuAlert, side);
  AddIcon(list.get(), res::Strip::Toolbar, res::kToolbarTest, side);
  return list;
}

// None when the program's folder cannot be read; silence and beep remain.
std::vector<std::string> WaveFiles() {
  std::vector<std::string> files;
  try {
    files = toolkit::ReadFolder(core::ProgramDirectory()).files;
  } catch (const core::RuntimeError&) {
    return files;
  }
  std::erase_if(files, [](const std::string& file) { return !toolkit::MatchesPattern(file, "*.wav"); });
  return files;
}

}  // namespace

void InterfacePage::CreateControls() {
  lblcapPosition = AddLabel({2011, "New Message Position"});
  tbPos.Create(hwnd());
  lblcapHeight = AddLabel({2022, "Alert height:"});
  lblHeight = AddLabel("");
  lblcapLanguage = AddLabel("Language/Langage/Sprache/Lenguaje:");
  CMBlang = AddControl("COMBOBOX", "", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, 0, kLanguageBox);
  for (const char* language : kLanguages) ::SendMessageA(CMBlang, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(language));
  chkStartUp = AddControl("BUTTON", {2014, "&Run Quillon on StartUp"}, BS_AUTOCHECKBOX | WS_TABSTOP, 0, kStartUpBox);
  lblcapSound = AddLabel({2012, "Play sound on new message?"});
  imlSnd = SoundPictures();
  lvSnd.Attach(AddControl(WC_LISTVIEWA, "", ChoiceList::kStyle | LVS_SHAREIMAGELISTS, WS_EX_CLIENTEDGE), imlSnd.get());
  AddButtons(tbSnd, kSoundButtons);
}

void InterfacePage::Fill() {
  AddPos();
  AddSnd();
}

void InterfacePage::SetPos(int position) { tbPos.Press(position - 1); }

void InterfacePage::AddPos() {
  const Scratch picPos({Px(kPositionWidth), Px(kPositionHeight)});
  toolkit::ImageList imlPos = picPos.NewList(kPositions);
  for (int position = 1; position <= kPositions; ++position)
    picPos.Add(imlPos.get(), [position](HDC dc, const RECT& screen) { DrawPosition(dc, screen, position); });
  tbPos.SetPictures(std::move(imlPos), kFirstPosition);
  for (int i = 0; i < kPositions; ++i)
    AddName(kPositionNames[i], [this, i](const std::string& name) { tbPos.SetName(kFirstPosition + i, name); });
}

void InterfacePage::AddSnd() {
  const std::vector<std::string> lstWav = WaveFiles();
  sounds_ = SoundsOf(lstWav);
  lvSnd.Clear();
  for (std::size_t i = 0; i < sounds_.size(); ++i)
    lvSnd.Add(sounds_[i].text, static_cast<int>(std::min<std::size_t>(i, kWavePicture)));
  AddCaption({2202, "(Silent)"}, [this](const std::string& text) { lvSnd.SetText(0, text); });
  AddCaption({2203, "(Beep)"}, [this](const std::string& text) { lvSnd.SetText(1, text); });
}

void InterfacePage::LayOut() {
  const toolkit::Area page = toolkit::ClientAreaOf(hwnd());
  const int margin = Px(kMargin), gap = Px(kGap), line = LineHeight();
  const int column = (page.right - 3 * margin) / 2, right = margin + column + margin;
  int top = margin;
  const auto next = [&top](int height, int space) { return std::exchange(top, top + height + space); };
  SetArea(lblcapPosition, AreaAt(margin, next(line, gap), column, line));
  const int positions = tbPos.ButtonsSize().cy;
  SetArea(tbPos.hwnd(), AreaAt(margin, next(positions, Px(8_dp)), column, positions));
  const int caption = WidthOf(lblcapHeight);
  SetArea(lblcapHeight, AreaAt(margin, top, caption, line));
  SetArea(lblHeight, AreaAt(margin + caption + Px(6_dp), next(line, Px(14_dp)), column - caption - Px(6_dp), line));
  SetArea(lblcapLanguage, AreaAt(margin, next(line, gap), column, line));
  SetArea(CMBlang, AreaAt(margin, next(FieldHeight(), Px(14_dp)), column, Px(kDropHeight)));
  SetArea(chkStartUp, AreaAt(margin, next(FieldHeight(), 0), column, FieldHeight()));

  const SIZE test = tbSnd.NaturalSize();
  const int listTop = margin + line + gap, testTop = page.bottom - 2 * margin - test.cy;
  SetArea(lblcapSound, AreaAt(right, margin, column, line));
  SetArea(lvSnd.hwnd(), AreaAt(right, listTop, column, testTop - gap - listTop));
  SetArea(tbSnd.hwnd(), AreaAt(right, testTop, test.cx, test.cy));
  lvSnd.FitColumn();
}

void InterfacePage::InputSets() {
  SetPos(core::gPopPos);
  ::SetWindowTextA(lblHeight, std::to_string(core::gAlertHeight).c_str());
  const auto* const language = std::ranges::find(kLanguages, core::gLanguage);
  const auto index = language == std::end(kLanguages) ? -1 : language - std::begin(kLanguages);
  ::SendMessageA(CMBlang, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
  ::SendMessageA(chkStartUp, BM_SETCHECK, core::gRunAtLogon == 0 ? BST_UNCHECKED : BST_CHECKED, 0);
  const auto sound = std::ranges::find(sounds_, core::gSound, &Sound::key);
  if (sound != sounds_.end()) lvSnd.Select(static_cast<int>(sound - sounds_.begin()));
}

void InterfacePage::WriteSets() {
  if (const int pressed = tbPos.Pressed(); pressed >= 0) core::gPopPos = static_cast<std::int16_t>(pressed + 1);
  core::gSound = SelectedSound().value_or(core::gSound);
  core::gRunAtLogon = ::SendMessageA(chkStartUp, BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0;
}

std::optional<std::string> InterfacePage::SelectedSound() const {
  const int selected = lvSnd.Selected();
  if (selected < 0) return std::nullopt;
  return sounds_[static_cast<std::size_t>(selected)].key;
}

std::optional<std::string> InterfacePage::SelectedLanguage() const {
  const auto index = ::SendMessageA(CMBlang, CB_GETCURSEL, 0, 0);
  if (index < 0) return std::nullopt;
  return kLanguages[index];
}

void InterfacePage::WriteLanguage() { core::gLanguage = SelectedLanguage().value_or(core::gLanguage); }

// The question is asked in the selected language and in English, in case the language was selected by mistake.
void InterfacePage::ChangeLanguage() {
  const auto chosen = SelectedLanguage();
  if (!chosen || *chosen == core::gLanguage) return;
  const int index = static_cast<int>(::SendMessageA(CMBlang, CB_GETCURSEL, 0, 0));
  std::string question = core::GetText(kQuestionTexts[index]);
  if (index != 0) question += "\r\n\r\n" + core::GetText(kQuestionTexts[0]);
  if (!core::AskBox({.text = question, .title = core::GetText(kQuestionTitleText)})) return;
  core::ChangeLang(*chosen);
  SetLanOfAll();
}

std::span<const toolkit::Command> InterfacePage::Commands() const {
  static const toolkit::Command kCommands[] = {{kTestButton, &InterfacePage::tbSnd_Click}};
  return kCommands;
}

void InterfacePage::tbSnd_Click() {
  if (const auto key = SelectedSound()) core::PlayAlertSound(*key);
}

}  // namespace options
