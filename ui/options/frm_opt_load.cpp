// The options dialog: making its controls and giving them their places.
#include <algorithm>

#include "core/files.h"
#include "core/globals.h"
#include "core/runtime_error.h"
#include "net/packet.h"
#include "ui/options/drawn_images.h"
#include "ui/options/frm_opt.h"
#include "ui/options/frm_opt_parts.h"
#include "ui/options/palette.h"
#include "ui/toolkit/byte_limit.h"
#include "ui/toolkit/menu/menu_items.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/save/disk_folder.h"
#include "ui/toolkit/save/save_name.h"
#include "ui/toolkit/screen.h"
#include "ui/toolkit/toolbar.h"

namespace options {
namespace {

using toolkit::Px;
using toolkit::operator""_dp;

constexpr struct { toolkit::Twips width, height; } kSwatch{38_dp, 30_dp}, kPosition{36_dp, 27_dp};

constexpr DWORD kLabelStyle = SS_LEFTNOWORDWRAP | SS_NOPREFIX;
constexpr DWORD kSwatchListStyle =
    LVS_ICON | LVS_SHAREIMAGELISTS | LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_AUTOARRANGE | WS_TABSTOP;
constexpr DWORD kPosStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP | TBSTYLE_FLAT | TBSTYLE_TRANSPARENT | CCS_NORESIZE |
                            CCS_NOPARENTALIGN | CCS_NODIVIDER;

// The window is wide enough for all buttons side by side, and a toolbar without a width has already broken its line.
void KeepInOneLine(HWND toolbar) {
  const LONG_PTR style = ::GetWindowLongPtrA(toolbar, GWL_STYLE);
  ::SetWindowLongPtrA(toolbar, GWL_STYLE, style & ~LONG_PTR{TBSTYLE_WRAPABLE});
  for (WPARAM i = 0; i < static_cast<WPARAM>(::SendMessageA(toolbar, TB_BUTTONCOUNT, 0, 0)); ++i) {
    TBBUTTON button{};
    ::SendMessageA(toolbar, TB_GETBUTTON, i, reinterpret_cast<LPARAM>(&button));
    ::SendMessageA(toolbar, TB_SETSTATE, static_cast<WPARAM>(button.idCommand), button.fsState & ~TBSTATE_WRAP);
  }
}

// Buttons of which one is pressed.
void MakeRadio(HWND toolbar, int firstId, int count) {
  for (int i = 0; i < count; ++i) {
    TBBUTTONINFOA info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_STYLE;
    info.fsStyle = BTNS_CHECKGROUP | BTNS_AUTOSIZE;
    ::SendMessageA(toolbar, TB_SETBUTTONINFOA, static_cast<WPARAM>(firstId + i), reinterpret_cast<LPARAM>(&info));
  }
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

// None when the program's folder cannot be read: the sounds without a file are still to be had.
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

// The sunken edges of the preview.
void PaintPreview(HDC dc, const RECT& client) {
  RECT area = client;
  ::FillRect(dc, &area, ::GetSysColorBrush(COLOR_WINDOW));
  ::DrawEdge(dc, &area, EDGE_SUNKEN, BF_RECT);
}

}  // namespace

void FrmOpt::Load() {
  // A window without a visible owner has a button in the task bar.
  const HWND active = ::GetActiveWindow(), owner = ::IsWindowVisible(active) ? active : nullptr;
  Create({"frmOpt", kOptStyle, kOptExStyle, COLOR_BTNFACE}, {2001, "Options - Quillon"}, {}, owner);
  AddToolbar(tbOpt, kPageButtons);
  MakeRadio(tbOpt.hwnd(), kUserButton, kPages);
  CreatePages();
  for (HWND& line : lines_) line = AddControl("STATIC", "", SS_ETCHEDHORZ);
  AddToolbar(TB, kCommandButtons);
  for (const toolkit::Toolbar* toolbar : {&tbOpt, &TB, &tbSnd, &tbSec, &tbGroups}) KeepInOneLine(toolbar->hwnd());
  SetLan();
  PlaceWindow();
  AddCols();
  AddPos();
  AddSnd();
  AddGroups();
  LayOut();
  InputSets();
  ShowPage(kUser);
  ::SetFocus(txtName);
}

// In the order of the Tab key, as in each page.
void FrmOpt::CreatePages() {
  for (auto& page : picOpt) {
    page = std::make_shared<Page>();
    page->Load(hwnd(), "picOpt");
  }
  CreateUserPage();
  CreateInterfacePage();
  CreateSecurityPage();
  CreateGroupsPage();
}

HWND FrmOpt::AddLabel(std::size_t page, std::size_t label) {
  return lblcap[label] = picOpt[page]->AddControl("STATIC", kLabelTexts[label], kLabelStyle);
}

// Without a limit: other users' names come from anywhere.
HWND FrmOpt::AddBox(std::size_t page, int id) {
  const HWND box = picOpt[page]->AddControl("EDIT", "", ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, id);
  ::SendMessageA(box, EM_SETLIMITTEXT, 0, 0);
  return box;
}

void FrmOpt::CreateUserPage() {
  Page& page = *picOpt[kUser];
  AddLabel(kUser, kNameLabel);
  txtName = AddBox(kUser, kNameBox);
  toolkit::LimitBytes(txtName, net::kMaxName);
  AddLabel(kUser, kColourLabel);
  lvCol = page.AddControl(WC_LISTVIEWA, "", kSwatchListStyle, WS_EX_CLIENTEDGE);
  ListView_SetExtendedListViewStyle(lvCol, LVS_EX_DOUBLEBUFFER);
  Frame1 = page.AddControl("BUTTON", {2010, "Prevew"}, BS_GROUPBOX | WS_CLIPSIBLINGS);
  picPrevew = std::make_shared<Page>();
  picPrevew->Load(page.hwnd(), "picPrevew");
  picPrevew->paint = PaintPreview;
  lblPrevew = picPrevew->AddControl("STATIC", "<UName>", SS_CENTER | SS_NOPREFIX | SS_ENDELLIPSIS);
  ::SendMessageA(lblPrevew, WM_SETFONT, reinterpret_cast<WPARAM>(toolkit::BoldDialogFont()), FALSE);
  picPrevew->Show();
}

void FrmOpt::CreateInterfacePage() {
  Page& page = *picOpt[kInterface];
  AddLabel(kInterface, kPositionLabel);
  tbPos = toolkit::Created(::CreateWindowExA(0, TOOLBARCLASSNAMEA, "", kPosStyle, 0, 0, 0, 0, page.hwnd(), nullptr,
                                             ::GetModuleHandleA(nullptr), nullptr));
  ::SendMessageA(tbPos, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  ::SendMessageA(tbPos, TB_SETMAXTEXTROWS, 0, 0);
  toolkit::EnableKeyboardNavigation(tbPos);
  AddLabel(kInterface, kHeightLabel);
  lblHeight = page.AddControl("STATIC", "", kLabelStyle);
  AddLabel(kInterface, kLanguageLabel);
  CMBlang = page.AddControl("COMBOBOX", "", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP, 0, kLanguageBox);
  for (const char* language : kLanguages) ::SendMessageA(CMBlang, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(language));
  chkStartUp =
      page.AddControl("BUTTON", {2014, "&Run Quillon on StartUp"}, BS_AUTOCHECKBOX | WS_TABSTOP, 0, kStartUpBox);
  AddLabel(kInterface, kSoundLabel);
  imlSnd = SoundPictures();
  lvSnd.Attach(page.AddControl(WC_LISTVIEWA, "", ChoiceList::kStyle | LVS_SHAREIMAGELISTS, WS_EX_CLIENTEDGE),
               imlSnd.get());
  page.AddToolbar(tbSnd, kSoundButtons);
}

void FrmOpt::CreateSecurityPage() {
  Page& page = *picOpt[kSecurity];
  AddLabel(kSecurity, kBlockLabel);
  txtBlock = AddBox(kSecurity, kBlockBox);
  page.AddToolbar(tbSec, kBlockButtons);
  page.AddName(kLabelTexts[kBlockLabel]);
  lvBlock.Attach(page.AddControl(WC_LISTVIEWA, "", ChoiceList::kStyle | LVS_SHAREIMAGELISTS, WS_EX_CLIENTEDGE),
                 toolkit::SharedPictures(res::Strip::Roster));
  cmdDAdd = page.AddControl("BUTTON", "", 0, 0, kBlockEnter);
  ::ShowWindow(cmdDAdd, SW_HIDE);
}

void FrmOpt::CreateGroupsPage() {
  Page& page = *picOpt[kGroups];
  AddLabel(kGroups, kGroupsLabel);
  txtGroups = AddBox(kGroups, kGroupBox);
  page.AddToolbar(tbGroups, kGroupButtons);
  page.AddName(kLabelTexts[kGroupsLabel]);
  tvGroups.Attach(page.AddControl(WC_TREEVIEWA, "", GroupTree::kStyle, WS_EX_CLIENTEDGE),
                  toolkit::SharedPictures(res::Strip::Roster));
  cmdGroups = page.AddControl("BUTTON", "<Enter Detect>", 0, 0, kGroupEnter);
  ::ShowWindow(cmdGroups, SW_HIDE);
}

void FrmOpt::AddCols() {
  const SIZE size{Px(kSwatch.width), Px(kSwatch.height)};
  const Scratch picBuf(size);
  imlCol = picBuf.NewList(static_cast<int>(kPalette.size()));
  ListView_SetImageList(lvCol, imlCol.get(), LVSIL_NORMAL);
  for (std::size_t i = 0; i < kPalette.size(); ++i) {
    picBuf.Add(imlCol.get(), [colour = static_cast<COLORREF>(kPalette[i].colour)](HDC dc, const RECT& box) {
      DrawSwatch(dc, box, colour);
    });
    LVITEMA item{};
    item.mask = LVIF_IMAGE | LVIF_PARAM;
    item.iItem = static_cast<int>(i);
    item.iImage = static_cast<int>(i);
    item.lParam = kPalette[i].colour;
    ::SendMessageA(lvCol, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&item));
    AddCaption(kPalette[i].name, [this, index = item.iItem](const std::string& name) { SetSwatchName(index, name); });
  }
}

// Never seen, since the swatches are drawn without their texts.
void FrmOpt::SetSwatchName(int index, const std::string& name) {
  LVITEMA item{};
  item.mask = LVIF_TEXT;
  item.iItem = index;
  item.pszText = const_cast<char*>(name.c_str());
  ::SendMessageA(lvCol, LVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

void FrmOpt::AddPos() {
  while (::SendMessageA(tbPos, TB_DELETEBUTTON, 0, 0)) continue;
  const Scratch picPos({Px(kPosition.width), Px(kPosition.height)});
  toolkit::ImageList images = picPos.NewList(4);
  for (int position = 1; position <= 4; ++position)
    picPos.Add(images.get(), [position](HDC dc, const RECT& screen) { DrawPosition(dc, screen, position); });
  ::SendMessageA(tbPos, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images.get()));
  imlPos = std::move(images);
  for (int i = 0; i < 4; ++i) {
    TBBUTTON button{};
    button.iBitmap = i;
    button.idCommand = kFirstPosition + i;
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = BTNS_CHECKGROUP;
    ::SendMessageA(tbPos, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
    AddCaption(kPositions[i], [this, i](const std::string& text) { SetPositionName(i, toolkit::NameOf(text)); });
  }
}

// Never seen: the toolbar has no lines of text.
void FrmOpt::SetPositionName(int index, std::string name) {
  TBBUTTONINFOA info{};
  info.cbSize = sizeof info;
  info.dwMask = TBIF_TEXT;
  info.pszText = name.data();
  ::SendMessageA(tbPos, TB_SETBUTTONINFOA, static_cast<WPARAM>(kFirstPosition + index),
                 reinterpret_cast<LPARAM>(&info));
}

void FrmOpt::AddSnd() {
  const std::vector<std::string> lstWav = WaveFiles();
  sounds_ = SoundsOf(lstWav);
  lvSnd.Clear();
  for (std::size_t i = 0; i < sounds_.size(); ++i)
    lvSnd.Add(sounds_[i].text, static_cast<int>(std::min<std::size_t>(i, kWavePicture)));
  AddCaption({2202, "(Silent)"}, [this](const std::string& text) { lvSnd.SetText(0, text); });
  AddCaption({2203, "(Beep)"}, [this](const std::string& text) { lvSnd.SetText(1, text); });
}

void FrmOpt::AddGroups() {
  tvGroups.AddRoot();
  AddCaption({2201, "Groups"}, [this](const std::string& text) { tvGroups.SetRootText(text); });
}

}  // namespace options
