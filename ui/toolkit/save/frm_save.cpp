#include "ui/toolkit/save/frm_save.h"

#include <algorithm>

#include "core/language.h"
#include "core/message_box.h"
#include "core/runtime_error.h"
#include "core/text.h"
#include "ui/toolkit/modal.h"
#include "ui/toolkit/save/disk_folder.h"
#include "ui/toolkit/save/save_name.h"
#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

enum ControlId : int { kSave = IDOK, kClose = IDCANCEL, kDrive = 101, kFolders, kFiles, kName, kType };

constexpr Caption kFileType{6002, "File Type:"}, kFileName{6003, "File Name:"}, kLookIn{6004, "Look in:"};
constexpr int kCannotOpenText = 6201;
enum Label { kTypeLabel, kNameLabel, kFolderLabel };

constexpr Twips kWidth = 480_dp, kHeight = 360_dp, kMinWidth = 380_dp, kMinHeight = 260_dp;
constexpr Twips kMargin = 10_dp, kGap = 8_dp, kButtonWidth = 90_dp, kButtonHeight = 25_dp, kFieldHeight = 22_dp,
                kDropHeight = 200_dp;

constexpr DWORD kLabelStyle = SS_LEFTNOWORDWRAP | SS_NOPREFIX | SS_CENTERIMAGE;
constexpr DWORD kDropDown = CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP;

int SelectedIn(HWND combo) { return static_cast<int>(::SendMessageA(combo, CB_GETCURSEL, 0, 0)); }

// Translated captions may be wider than designed.
int WidthOf(HWND control, Twips min, Twips padding) {
  return std::max(Px(min), static_cast<int>(MeasureText(DialogFont(), TextOf(control)).cx) + Px(padding));
}

// The ancestors, the folder itself, and its sub-folders.
std::vector<IconList::Entry> FolderEntries(const std::vector<std::string>& steps,
                                           const std::vector<std::string>& inside) {
  std::vector<IconList::Entry> entries;
  for (const std::string& step : steps) entries.push_back({step, OpenFolderIcon(), static_cast<int>(entries.size())});
  for (const std::string& name : inside) entries.push_back({name, ClosedFolderIcon(), static_cast<int>(steps.size())});
  return entries;
}

}  // namespace

std::string AskSaveName(const Caption& title) {
  const auto dialog = std::make_shared<FrmSave>(title);
  dialog->Load();
  RunModal(*dialog);
  return dialog->Result();
}

void FrmSave::Load() {
  constexpr WindowStyle style{"frmSave", WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_CLIPCHILDREN,
                              WS_EX_DLGMODALFRAME};
  Create(style, title_, CentredAround(style, Px(kWidth), Px(kHeight)), ::GetActiveWindow());
  SetMinSize(kMinWidth, kMinHeight);
  CreateControls();
  SetLan();
  LayOut();
  OpenOrReport([this] { SetLocation(ClosedFolder(DocumentsFolder())); });
  FocusFirst(txtFileName);
}

// In Tab order.
void FrmSave::CreateControls() {
  Label1[kFolderLabel] = AddControl("STATIC", kLookIn, kLabelStyle);
  Drive1 = AddControl("COMBOBOX", "", kDropDown, 0, kDrive);
  AddName(kLookIn);
  Dir1.Attach(AddControl("LISTBOX", "", IconList::kStyle, WS_EX_CLIENTEDGE, kFolders));
  AddName(kFileName);
  List1.Attach(AddControl("LISTBOX", "", IconList::kStyle, WS_EX_CLIENTEDGE, kFiles));
  Label1[kNameLabel] = AddControl("STATIC", kFileName, kLabelStyle);
  txtFileName = AddControl("EDIT", "", ES_AUTOHSCROLL | WS_TABSTOP, WS_EX_CLIENTEDGE, kName);
  Label1[kTypeLabel] = AddControl("STATIC", kFileType, kLabelStyle);
  txtFileType = AddControl("COMBOBOX", "", kDropDown, 0, kType);
  cmdSave = AddControl("BUTTON", {6005, "&Save"}, BS_DEFPUSHBUTTON | WS_TABSTOP, 0, kSave);
  cmdClose = AddControl("BUTTON", {6006, "&Close"}, WS_TABSTOP, 0, kClose);
  ::SendMessageA(txtFileName, EM_SETLIMITTEXT, MAX_PATH - 1, 0);
  for (const char* type : kSaveTypes) ::SendMessageA(txtFileType, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(type));
  ::SendMessageA(txtFileType, CB_SETCURSEL, 0, 0);
  drives_ = Drives();
  for (const std::string& root : drives_)
    ::SendMessageA(Drive1, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(DriveCaption(root).c_str()));
}

void FrmSave::LayOut() {
  const Area client = ClientAreaOf(hwnd());
  const int line = LineHeight();
  const int margin = Px(kMargin), gap = Px(kGap), field = std::max(Px(kFieldHeight), line + Px(6_dp));
  const int row = std::max(Px(kButtonHeight), field), inRow = (row - field) / 2;
  const int right = client.right - margin;
  const int button = std::max(WidthOf(cmdSave, kButtonWidth, 16_dp), WidthOf(cmdClose, kButtonWidth, 16_dp));
  int label = 0;
  for (const HWND text : Label1) label = std::max(label, WidthOf(text, {}, {}));
  const int fieldLeft = margin + label + gap, fieldWidth = right - button - gap - fieldLeft;
  const int typeTop = client.bottom - margin - row, nameTop = typeTop - gap - row;
  const int listTop = margin + field + gap, listHeight = nameTop - gap - listTop;
  const int folders = (right - margin - gap) / 2, filesLeft = margin + folders + gap;

  SetArea(Label1[kFolderLabel], AreaAt(margin, margin, label, field));
  SetArea(Drive1, AreaAt(fieldLeft, margin, right - fieldLeft, Px(kDropHeight)));
  SetArea(Dir1.hwnd(), AreaAt(margin, listTop, folders, listHeight));
  SetArea(List1.hwnd(), AreaAt(filesLeft, listTop, right - filesLeft, listHeight));
  SetArea(Label1[kNameLabel], AreaAt(margin, nameTop + inRow, label, field));
  SetArea(txtFileName, AreaAt(fieldLeft, nameTop + inRow, fieldWidth, field));
  SetArea(cmdSave, AreaAt(right - button, nameTop, button, row));
  SetArea(Label1[kTypeLabel], AreaAt(margin, typeTop + inRow, label, field));
  SetArea(txtFileType, AreaAt(fieldLeft, typeTop + inRow, fieldWidth, Px(kDropHeight)));
  SetArea(cmdClose, AreaAt(right - button, typeTop, button, row));
}

LRESULT FrmSave::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SIZE:
      if (cmdClose) LayOut();
      return 0;
    case WM_DRAWITEM:
      (wParam == kFolders ? Dir1 : List1).Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
      return TRUE;
    case WM_CLOSE:
      cmdClose_Click();
      return 0;
    default:
      return Window::Handle(message, wParam, lParam);
  }
}

std::span<const Command> FrmSave::Commands() const {
  static const Command kCommands[] = {
      {kSave, &FrmSave::OnEnter},
      {kClose, &FrmSave::cmdClose_Click},
      {kDrive, &FrmSave::Drive1_Change, CBN_SELENDOK},
      {kFolders, &FrmSave::OpenSelectedFolder, LBN_DBLCLK},
      {kFiles, &FrmSave::List1_Click, LBN_SELCHANGE},
      {kFiles, &FrmSave::cmdSave_Click, LBN_DBLCLK},
      {kType, &FrmSave::txtFileType_Click, CBN_SELCHANGE},
      {kName, &FrmSave::txtFileName_LostFocus, EN_KILLFOCUS},
  };
  return kCommands;
}

void FrmSave::txtFileName_LostFocus() { ShowName(TrimmedTextOf(txtFileName)); }

// Save was clicked, or Enter was pressed anywhere.
void FrmSave::OnEnter() {
  const HWND focus = ::GetFocus();
  if (focus == cmdClose) return cmdClose_Click();
  if (focus == Dir1.hwnd()) return OpenSelectedFolder();
  cmdSave_Click();
}

void FrmSave::cmdSave_Click() {
  const std::string extension(ExtensionOf(kSaveTypes[SelectedIn(txtFileType)]));
  const SaveDecision decision = DecideSave(TextOf(txtFileName), folder_, extension, IsFolder);
  switch (decision.action) {
    case SaveAction::None:
      return;
    case SaveAction::Filter:
      pattern_ = decision.text;
      return rFileList();
    case SaveAction::GoTo:
      return OpenOrReport([this, &decision] { SetLocation(decision.text); });
    case SaveAction::Save:
      result_ = decision.text;
      CloseModal(*this);
  }
}

void FrmSave::cmdClose_Click() {
  result_.clear();
  CloseModal(*this);
}

void FrmSave::txtFileType_Click() {
  const std::string_view extension = ExtensionOf(kSaveTypes[SelectedIn(txtFileType)]);
  ShowName(SwitchExtension(TextOf(txtFileName), pattern_, extension));
  pattern_ = PatternOf(extension);
  rFileList();
}

void FrmSave::Drive1_Change() {
  const int index = SelectedIn(Drive1);
  if (index < 0) return;
  OpenOrReport([this, index] { OpenFolder(drives_[static_cast<std::size_t>(index)]); });
}

void FrmSave::List1_Click() { ShowName(List1.TextAt(List1.Selection())); }

void FrmSave::OpenSelectedFolder() {
  const int selection = Dir1.Selection();
  if (selection < 0) return;
  const auto index = static_cast<std::size_t>(selection);
  std::string folder = FolderOf(steps_, index + 1);
  if (index >= steps_.size()) folder += ClosedFolder(Dir1.TextAt(selection));
  OpenOrReport([this, &folder] { OpenFolder(folder); });
}

// Reports what cannot be opened in a message box; the dialog does not change.
void FrmSave::OpenOrReport(const std::function<void()>& open) {
  try {
    open();
  } catch (const core::RuntimeError&) {
    SelectDrive();
    core::ShowBox({.text = core::GetText(kCannotOpenText), .icon = core::BoxIcon::Exclamation});
  }
}

void FrmSave::SetLocation(const std::string& path) {
  const std::size_t slash = core::FindLast(path, "\\") + 1;
  OpenFolder(CleanPath(path.substr(0, slash)));
  const std::string name = path.substr(slash);
  ShowName(name);
  if (!name.empty()) List1.SelectText(name);
}

void FrmSave::OpenFolder(const std::string& folder) {
  const FolderContent content = ReadFolder(folder);
  folder_ = folder;
  steps_ = PathSteps(folder_);
  Dir1.Fill(FolderEntries(steps_, content.folders));
  Dir1.Select(static_cast<int>(steps_.size()) - 1);
  SelectDrive();
  File1 = content.files;
  ShowFiles();
}

void FrmSave::SelectDrive() {
  const auto isHere = [this](const std::string& root) {
    return core::EqualIgnoringCase(root.substr(0, 2), folder_.substr(0, 2));
  };
  const auto found = std::ranges::find_if(drives_, isHere);
  const int index = found == drives_.end() ? -1 : static_cast<int>(found - drives_.begin());
  ::SendMessageA(Drive1, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void FrmSave::rFileList() {
  File1.clear();
  OpenOrReport([this] { File1 = ReadFolder(folder_).files; });
  ShowFiles();
}

void FrmSave::ShowFiles() {
  std::vector<IconList::Entry> entries;
  for (const std::string& name : File1)
    if (MatchesPattern(name, pattern_)) entries.push_back({name, FileIcon(name)});
  List1.Fill(entries);
  List1.Select(0);
}

void FrmSave::ShowName(const std::string& name) {
  if (name != TextOf(txtFileName)) ::SetWindowTextA(txtFileName, name.c_str());
}

}  // namespace toolkit
