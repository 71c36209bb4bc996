#include "ui/toolkit/toolbar.h"

#include <algorithm>
#include <utility>

#include "core/text.h"
#include "ui/toolkit/menu/menu_items.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

constexpr DWORD kStyle =
    WS_CHILD | WS_VISIBLE | TBSTYLE_FLAT | TBSTYLE_TRANSPARENT | CCS_NORESIZE | CCS_NOPARENTALIGN | CCS_NODIVIDER;

// Padding of a button beside its caption: the control's own padding does not scale. In a narrow window the buttons move
// closer together before they wrap.
constexpr Twips kSpare = 12_dp, kMinSpare = 0_dp;

HWND NewToolbar(HWND parent, DWORD style) {
  const HWND toolbar =
      Created(::CreateWindowExA(0, TOOLBARCLASSNAMEA, "", style, 0, 0, 0, 0, parent, nullptr, Instance(), nullptr));
  ::SendMessageA(toolbar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
  return toolbar;
}

void AddButton(HWND toolbar, int id, int picture, BYTE style, const char* caption) {
  TBBUTTON button{};
  button.iBitmap = picture;
  button.idCommand = id;
  button.fsState = TBSTATE_ENABLED;
  button.fsStyle = style;
  button.iString = reinterpret_cast<INT_PTR>(caption);
  ::SendMessageA(toolbar, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
}

void SetButtonText(HWND toolbar, int id, std::string& text) {
  TBBUTTONINFOA info{};
  info.cbSize = sizeof info;
  info.dwMask = TBIF_TEXT;
  info.pszText = text.data();
  ::SendMessageA(toolbar, TB_SETBUTTONINFOA, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(&info));
}

SIZE SizeOfButtons(HWND toolbar) {
  const LRESULT count = ::SendMessageA(toolbar, TB_BUTTONCOUNT, 0, 0);
  RECT last{};
  ::SendMessageA(toolbar, TB_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&last));
  return {last.right, last.bottom + Px(2_dp)};
}

int ContentWidth(const std::string& caption) {
  std::string shown = caption;
  std::erase(shown, '&');
  return std::max(static_cast<int>(MeasureText(DialogFont(), shown).cx), PictureSize(res::Strip::Toolbar));
}

constexpr UINT_PTR kSubclassId = 1;

int HotItem(HWND toolbar) { return static_cast<int>(::SendMessageA(toolbar, TB_GETHOTITEM, 0, 0)); }

void SetHotItem(HWND toolbar, int index) { ::SendMessageA(toolbar, TB_SETHOTITEM, static_cast<WPARAM>(index), 0); }

// The pressed button, or the first enabled one.
int FirstItem(HWND toolbar) {
  const int count = static_cast<int>(::SendMessageA(toolbar, TB_BUTTONCOUNT, 0, 0));
  int first = -1;
  for (int i = count - 1; i >= 0; --i) {
    TBBUTTON button{};
    ::SendMessageA(toolbar, TB_GETBUTTON, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&button));
    if (button.fsState & TBSTATE_CHECKED) return i;
    if (button.fsState & TBSTATE_ENABLED) first = i;
  }
  return first;
}

void MoveHotItem(HWND toolbar, int step) {
  const int count = static_cast<int>(::SendMessageA(toolbar, TB_BUTTONCOUNT, 0, 0));
  int index = HotItem(toolbar);
  for (int tried = 0; tried < count; ++tried) {
    index = (index + step + count) % count;
    TBBUTTON button{};
    ::SendMessageA(toolbar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
    if (button.fsState & TBSTATE_ENABLED) return SetHotItem(toolbar, index);
  }
}

void ClickHotItem(HWND toolbar) {
  TBBUTTON button{};
  const int index = HotItem(toolbar);
  if (index < 0) return;
  ::SendMessageA(toolbar, TB_GETBUTTON, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&button));
  if (!(button.fsState & TBSTATE_ENABLED)) return;
  if (button.fsStyle & BTNS_CHECK) ::SendMessageA(toolbar, TB_CHECKBUTTON, static_cast<WPARAM>(button.idCommand), TRUE);
  ::SendMessageA(::GetParent(toolbar), WM_COMMAND, static_cast<WPARAM>(button.idCommand),
                 reinterpret_cast<LPARAM>(toolbar));
}

bool KeyPressed(HWND toolbar, WPARAM key) {
  switch (key) {
    case VK_LEFT:
    case VK_UP:
      MoveHotItem(toolbar, -1);
      return true;
    case VK_RIGHT:
    case VK_DOWN:
      MoveHotItem(toolbar, 1);
      return true;
    case VK_SPACE:
    case VK_RETURN:
      ClickHotItem(toolbar);
      return true;
    default:
      return false;
  }
}

bool IsReturn(LPARAM message) {
  const auto* key = reinterpret_cast<const MSG*>(message);
  return key && key->wParam == VK_RETURN;
}

LRESULT CALLBACK KeyProcedure(HWND toolbar, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id, DWORD_PTR) {
  switch (message) {
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | (IsReturn(lParam) ? DLGC_WANTMESSAGE : 0);
    case WM_KEYDOWN:
      if (KeyPressed(toolbar, wParam)) return 0;
      break;
    case WM_SETFOCUS: {
      const LRESULT result = ::DefSubclassProc(toolbar, message, wParam, lParam);  // which goes to the first button
      SetHotItem(toolbar, FirstItem(toolbar));
      return result;
    }
    case WM_KILLFOCUS:
      SetHotItem(toolbar, -1);
      break;
    case WM_NCDESTROY:
      ::RemoveWindowSubclass(toolbar, KeyProcedure, id);
      break;
    default:
      break;
  }
  return ::DefSubclassProc(toolbar, message, wParam, lParam);
}

}  // namespace

void Toolbar::Create(HWND parent, std::span<const ToolButton> buttons) {
  buttons_ = buttons;
  hwnd_ = NewToolbar(parent, kStyle | TBSTYLE_WRAPABLE);
  ::SendMessageA(hwnd_, WM_SETFONT, reinterpret_cast<WPARAM>(DialogFont()), FALSE);
  ::SendMessageA(hwnd_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(SharedPictures(res::Strip::Toolbar)));
  for (const ToolButton& row : buttons) {
    AddButton(hwnd_, row.id, row.picture, BTNS_BUTTON, row.caption.builtIn);
    captions_.emplace_back(row.caption.builtIn);
  }
}

void Toolbar::Indent(int pixels) {
  indent_ = pixels;
  ::SendMessageA(hwnd_, TB_SETINDENT, static_cast<WPARAM>(pixels), 0);
}

void Toolbar::SetCaption(std::size_t index, const std::string& caption) {
  captions_[index] = caption;
  SetButtonText(hwnd_, buttons_[index].id, captions_[index]);
}

void Toolbar::SetWidths(int spare) {
  for (std::size_t i = 0; i < captions_.size(); ++i) {
    TBBUTTONINFOA info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_SIZE;
    info.cx = static_cast<WORD>(ContentWidth(captions_[i]) + spare);
    ::SendMessageA(hwnd_, TB_SETBUTTONINFOA, static_cast<WPARAM>(buttons_[i].id), reinterpret_cast<LPARAM>(&info));
  }
}

void Toolbar::Enable(int id, bool enabled) {
  const auto button = static_cast<WPARAM>(id);
  const bool now = ::SendMessageA(hwnd_, TB_ISBUTTONENABLED, button, 0) != 0;
  if (now != enabled) ::SendMessageA(hwnd_, TB_ENABLEBUTTON, button, MAKELPARAM(enabled, 0));
}

bool Toolbar::ClickMnemonic(char letter) {
  const char wanted = core::LowerCase(std::string(1, letter))[0];
  for (std::size_t i = 0; i < captions_.size(); ++i) {
    const int id = buttons_[i].id;
    if (MnemonicLetter(captions_[i]) != wanted) continue;
    if (!::SendMessageA(hwnd_, TB_ISBUTTONENABLED, static_cast<WPARAM>(id), 0)) return false;
    ::SendMessageA(::GetParent(hwnd_), WM_COMMAND, static_cast<WPARAM>(id), reinterpret_cast<LPARAM>(hwnd_));
    return true;
  }
  return false;
}

int Toolbar::Place(int width) {
  int free = width - indent_;
  for (const std::string& caption : captions_) free -= ContentWidth(caption);
  SetWidths(std::clamp(free / std::max(static_cast<int>(captions_.size()), 1), Px(kMinSpare), Px(kSpare)));
  SetArea(hwnd_, {0, 0, width, Px(1000_dp)});
  ::SendMessageA(hwnd_, TB_AUTOSIZE, 0, 0);
  const int height = SizeOfButtons(hwnd_).cy;
  SetArea(hwnd_, {0, 0, width, height});
  return height;
}

void Toolbar::MakeRadio() {
  for (const ToolButton& button : buttons_) {
    TBBUTTONINFOA info{};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_STYLE;
    info.fsStyle = BTNS_CHECKGROUP | BTNS_AUTOSIZE;
    ::SendMessageA(hwnd_, TB_SETBUTTONINFOA, static_cast<WPARAM>(button.id), reinterpret_cast<LPARAM>(&info));
  }
}

void Toolbar::Press(int id) { ::SendMessageA(hwnd_, TB_CHECKBUTTON, static_cast<WPARAM>(id), TRUE); }

// A toolbar of width 0 has wrapped after every button.
void Toolbar::KeepInOneLine() {
  const LONG_PTR style = ::GetWindowLongPtrA(hwnd_, GWL_STYLE);
  ::SetWindowLongPtrA(hwnd_, GWL_STYLE, style & ~LONG_PTR{TBSTYLE_WRAPABLE});
  for (const ToolButton& button : buttons_) {
    const auto id = static_cast<WPARAM>(button.id);
    const LRESULT state = ::SendMessageA(hwnd_, TB_GETSTATE, id, 0);
    ::SendMessageA(hwnd_, TB_SETSTATE, id, state & ~LRESULT{TBSTATE_WRAP});
  }
}

SIZE Toolbar::NaturalSize() {
  Place(Px(2000_dp));
  return SizeOfButtons(hwnd_);
}

SIZE Toolbar::ButtonsSize() const {
  SIZE size{};
  ::SendMessageA(hwnd_, TB_GETMAXSIZE, 0, reinterpret_cast<LPARAM>(&size));
  return size;
}

void PictureGroup::Create(HWND parent) {
  hwnd_ = NewToolbar(parent, kStyle);
  ::SendMessageA(hwnd_, TB_SETMAXTEXTROWS, 0, 0);
  EnableKeyboardNavigation(hwnd_);
}

void PictureGroup::SetPictures(ImageList pictures, int firstId) {
  while (::SendMessageA(hwnd_, TB_DELETEBUTTON, 0, 0)) continue;
  ::SendMessageA(hwnd_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(pictures.get()));
  pictures_ = std::move(pictures);
  firstId_ = firstId;
  count_ = ::ImageList_GetImageCount(pictures_.get());
  for (int i = 0; i < count_; ++i) AddButton(hwnd_, firstId + i, i, BTNS_CHECKGROUP, nullptr);
}

void PictureGroup::SetName(int id, std::string name) { SetButtonText(hwnd_, id, name); }

void PictureGroup::Press(int position) {
  for (int i = 0; i < count_; ++i) ::SendMessageA(hwnd_, TB_CHECKBUTTON, IdAt(i), i == position);
}

int PictureGroup::Pressed() const {
  for (int i = 0; i < count_; ++i)
    if (::SendMessageA(hwnd_, TB_ISBUTTONCHECKED, IdAt(i), 0)) return i;
  return -1;
}

SIZE PictureGroup::ButtonsSize() const { return SizeOfButtons(hwnd_); }

void EnableKeyboardNavigation(HWND toolbar) {
  ::SetWindowLongPtrA(toolbar, GWL_STYLE, ::GetWindowLongPtrA(toolbar, GWL_STYLE) | WS_TABSTOP);
  ::SetWindowSubclass(toolbar, KeyProcedure, kSubclassId, 0);
}

}  // namespace toolkit
