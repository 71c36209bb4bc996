#include "ui/toolkit/window.h"

#include <commctrl.h>

#include <algorithm>
#include <set>

#include "core/callback_guard.h"
#include "core/event_loop_win32.h"
#include "core/language.h"
#include "core/text.h"
#include "ui/toolkit/handles.h"
#include "ui/toolkit/menu/menu_items.h"
#include "ui/toolkit/menu/window_menu.h"
#include "ui/toolkit/pictures.h"
#include "ui/toolkit/screen.h"

namespace toolkit {
namespace {

Window* ObjectOf(HWND hwnd) { return reinterpret_cast<Window*>(::GetWindowLongPtrA(hwnd, GWLP_USERDATA)); }

BOOL CALLBACK ForwardColourChange(HWND control, LPARAM) {
  ::SendMessageA(control, WM_SYSCOLORCHANGE, 0, 0);
  return TRUE;
}

constexpr UINT_PTR kSnapBack = 0x5B;
constexpr UINT kSnapBackTime = 200;  // milliseconds after the last attempt

// Via another size: the window has this size already, and the desktop is notified of changes only.
void CALLBACK SnapBack(HWND hwnd, UINT, UINT_PTR id, DWORD) {
  ::KillTimer(hwnd, id);
  const Area place = AreaOf(hwnd);
  for (const int extra : {1, 0}) SetArea(hwnd, {place.left, place.top, place.right + extra, place.bottom + extra});
}

constexpr UINT kTopMostFlags = SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE;
static_assert(kTopMostFlags == 0x13);

// ::RemoveMenu ignores the second flag.
constexpr UINT kRemoveFlags = MF_BYPOSITION | MF_DISABLED;
static_assert(kRemoveFlags == 1026);

// Commands of menus and buttons, not notifications of controls.
bool IsCommand(UINT message, WPARAM wParam) {
  return message == WM_CLOSE || message == WM_SYSCOMMAND || (message == WM_COMMAND && HIWORD(wParam) <= 1);
}

void SetObject(HWND hwnd, Window* window) {
  ::SetWindowLongPtrA(hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(window));
}

}  // namespace

Window::~Window() {
  std::erase(open_, this);
  if (hwnd_) ::DestroyWindow(hwnd_);
}

void Window::Register(const WindowStyle& style) {
  static std::set<std::string> known;
  if (!known.insert(style.className).second) return;
  WNDCLASSEXA windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = Procedure;
  windowClass.hInstance = Instance();
  windowClass.hIcon = ProgramIcon(SM_CXICON);
  windowClass.hIconSm = ProgramIcon(SM_CXSMICON);
  windowClass.hCursor = ::LoadCursorA(nullptr, IDC_ARROW);
  windowClass.hbrBackground = ::GetSysColorBrush(style.background);
  windowClass.lpszClassName = style.className;
  ::RegisterClassExA(&windowClass);
}

void Window::Create(const WindowStyle& style, const Caption& title, const Area& place, HWND owner) {
  Register(style);
  Created(::CreateWindowExA(style.exStyle, style.className, title.builtIn, style.style, place.left, place.top,
                            place.Width(), place.Height(), owner, nullptr, Instance(), this));
  AddCaption(title, [this](const std::string& text) { ::SetWindowTextA(hwnd_, text.c_str()); });
}

HWND Window::AddControl(const char* className, const Caption& text, DWORD style, DWORD exStyle, int id) {
  const auto menu = reinterpret_cast<HMENU>(static_cast<INT_PTR>(id));
  const HWND control = Created(::CreateWindowExA(exStyle, className, "", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0,
                                                 hwnd_, menu, Instance(), nullptr));
  ::SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(DialogFont()), FALSE);
  // The text passed to CreateWindow is limited to 32 K characters.
  AddCaption(text, [control](const std::string& shown) { ::SetWindowTextA(control, shown.c_str()); });
  return control;
}

void Window::AddToolbar(Toolbar& toolbar, std::span<const ToolButton> buttons) {
  toolbar.Create(hwnd_, buttons);
  EnableKeyboardNavigation(toolbar.hwnd());
  toolbars_.push_back(&toolbar);
  for (std::size_t i = 0; i < buttons.size(); ++i)
    AddCaption(buttons[i].caption, [&toolbar, i](const std::string& text) { toolbar.SetCaption(i, text); });
}

void Window::AddName(Caption name, std::function<void(const std::string& name)> show) {
  name.spoken = true;
  AddCaption(name, [show = std::move(show)](const std::string& text) { show(NameOf(text)); });
}

void Window::AddName(const Caption& name) {
  const HWND label = AddControl("STATIC", "", SS_NOPREFIX);
  ::ShowWindow(label, SW_HIDE);
  AddName(name, [label](const std::string& shown) { ::SetWindowTextA(label, shown.c_str()); });
}

bool Command::Run(Window& window, unsigned id, unsigned notification) const {
  if (id < id_ || id - id_ >= count_ || notification != notification_) return false;
  if (runIndexed_)
    (window.*runIndexed_)(id - id_);
  else
    (window.*run_)();
  return true;
}

bool Window::RunCommand(unsigned id, unsigned notification) {
  return std::ranges::any_of(Commands(), [&](const Command& row) { return row.Run(*this, id, notification); });
}

void Window::AddMenu(WindowMenu& menu) {
  menu_ = &menu;
  menu.Create(hwnd_, fromLanguageFile_);
}

// Captions of a child window are kept by its parent, which outlives it.
void Window::AddCaption(const Caption& caption, std::function<void(const std::string& text)> show) {
  Window* around = Of(::GetAncestor(hwnd_, GA_ROOT));
  Window& owner = around ? *around : *this;
  show(caption.Text(owner.fromLanguageFile_));
  if (caption.code != 0) owner.captions_.push_back({caption, std::move(show)});
}

void Window::SetLan() {
  if (!core::CaptionsFromTable()) return;
  fromLanguageFile_ = true;
  for (const ShownCaption& shown : captions_) shown.show(shown.caption.Text(true));
  if (menu_) menu_->SetCaptions(true);
  LayOut();
}

void Window::SetLanOfAll() {
  const std::vector<Window*> windows = open_;
  for (Window* window : windows)
    if (std::ranges::find(open_, window) != open_.end()) window->SetLan();
}

void Window::Raise() {
  // The first SW_SHOW of a process may be overridden by its start-up info ("run minimised"), SW_RESTORE is not.
  const bool asItWas = ::IsWindowVisible(hwnd_) && !::IsIconic(hwnd_);
  ::ShowWindow(hwnd_, asItWas || ::IsZoomed(hwnd_) ? SW_SHOW : SW_RESTORE);
  ::SetForegroundWindow(hwnd_);
}

std::string Window::Text() const { return TextOf(hwnd_); }

LRESULT CALLBACK Window::Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    Window* created = static_cast<Window*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
    created->hwnd_ = hwnd;
    SetObject(hwnd, created);
    if (!core::GuardedSilently([created] { return open_.push_back(created), true; })) return FALSE;
  }
  Window* self = ObjectOf(hwnd);
  // There is no object before WM_NCCREATE and while it is being destroyed.
  const auto keep = self ? self->weak_from_this().lock() : nullptr;
  if (!keep) return ::DefWindowProcA(hwnd, message, wParam, lParam);
  if (IsCommand(message, wParam) && core::DeferDuringDispatch(hwnd, message, wParam, lParam)) return 0;
  const LRESULT result = core::Guarded([&] { return self->Handle(message, wParam, lParam); });
  if (message == WM_NCDESTROY) {
    SetObject(hwnd, nullptr);
    std::erase(open_, self);
    self->hwnd_ = nullptr;
    core::Guarded([&] {
      if (self->onDestroyed) self->onDestroyed();
    });
  }
  return result;
}

LRESULT Window::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_ACTIVATE:
      if (LOWORD(wParam) == WA_INACTIVE) RememberFocus();
      break;
    case WM_SYSCOMMAND:  // a window loses the focus before it is notified of being minimised
      if ((wParam & 0xFFF0) == SC_MINIMIZE) RememberFocus();
      break;
    case WM_SHOWWINDOW:
      if (wParam && !(::GetWindowLongPtrA(hwnd_, GWL_STYLE) & WS_CHILD)) LoadPictures();
      break;
    case WM_COMMAND:
      if (RunCommand(LOWORD(wParam), HIWORD(wParam))) return 0;
      break;
    case WM_GETMINMAXINFO:
      if (minWidth_ == Twips{}) break;
      reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {Px(minWidth_), Px(minHeight_)};
      return 0;
    case WM_WINDOWPOSCHANGING:
      return KeepMinSize(wParam, lParam);
    case WM_DISPLAYCHANGE:
      // Windows moves what is off the screen by itself, Wine does not.
      if (!::IsIconic(hwnd_) && !::IsZoomed(hwnd_)) SetArea(hwnd_, Reachable(AreaOf(hwnd_)));
      break;
    case WM_SYSCOLORCHANGE:  // sent to top-level windows only
      ::EnumChildWindows(hwnd_, ForwardColourChange, 0);
      break;
    case WM_SETFOCUS:
      PassFocusOn();
      return 0;
    default:
      break;
  }
  return ::DefWindowProcA(hwnd_, message, wParam, lParam);
}

// WM_GETMINMAXINFO keeps the window from becoming too small. Wine shows it too small anyway, clipped, until
// it is notified of a size again.
LRESULT Window::KeepMinSize(WPARAM wParam, LPARAM lParam) {
  const auto& change = *reinterpret_cast<const WINDOWPOS*>(lParam);
  const int width = change.cx, height = change.cy;
  const LRESULT result = ::DefWindowProcA(hwnd_, WM_WINDOWPOSCHANGING, wParam, lParam);
  const bool refused = change.cx > width || change.cy > height;
  if (refused && !(change.flags & SWP_NOSIZE)) ::SetTimer(hwnd_, kSnapBack, kSnapBackTime, SnapBack);
  return result;
}

void Window::RememberFocus() {
  const HWND focus = ::GetFocus();
  if (::IsChild(hwnd_, focus)) lastFocus_ = focus;
}

void Window::PassFocusOn() const {
  const HWND control = ::IsChild(hwnd_, lastFocus_) ? lastFocus_ : firstFocus_;
  if (control) ::SetFocus(control);
}

bool Window::Translate(MSG& message) {
  if (message.message != WM_SYSCHAR) return false;
  for (Toolbar* toolbar : toolbars_)
    if (toolbar->ClickMnemonic(static_cast<char>(message.wParam))) return true;
  return false;
}

// Null for foreign windows, such as message boxes, which use GWLP_USERDATA differently. Checks the class's procedure,
// since the window's own one may be subclassed by its menus.
Window* Window::Of(HWND hwnd) {
  const bool ours = hwnd && ::GetClassLongPtrA(hwnd, GCLP_WNDPROC) == reinterpret_cast<ULONG_PTR>(&Window::Procedure);
  return ours ? ObjectOf(hwnd) : nullptr;
}

BOOL CALLBACK Window::CollectReachable(HWND hwnd, LPARAM windows) {
  core::Guarded([&] {
    if (Of(hwnd) && ::IsWindowVisible(hwnd) && ::IsWindowEnabled(hwnd))
      reinterpret_cast<std::set<HWND>*>(windows)->insert(hwnd);
  });
  return TRUE;
}

// In the order of their handles, which is independent of the Z order. This is the only way to reach an alert by
// keyboard: it never takes the focus, and Alt+Tab does not list it.
void Window::RaiseNext() const {
  std::set<HWND> windows;
  ::EnumThreadWindows(::GetCurrentThreadId(), CollectReachable, reinterpret_cast<LPARAM>(&windows));
  if (windows.empty()) return;
  const auto next = windows.upper_bound(hwnd_);
  Of(next == windows.end() ? *windows.begin() : *next)->Raise();
}

namespace {

// IsDialogMessageA would only pass on such a character, and Wine passes on its two bytes one by one.
bool GoesToText(const MSG& message) {
  return message.message == WM_CHAR && (::SendMessageA(message.hwnd, WM_GETDLGCODE, 0, 0) & DLGC_WANTCHARS) != 0;
}

}  // namespace

bool FilterMessage(MSG& message) {
  if (message.message < WM_KEYFIRST || message.message > WM_KEYLAST) return false;
  const HWND root = ::GetAncestor(message.hwnd, GA_ROOT);
  Window* window = Window::Of(root);
  const auto keep = window ? window->weak_from_this().lock() : nullptr;
  if (!keep || !::IsWindowEnabled(root)) return false;
  if (message.message == WM_KEYDOWN && message.wParam == VK_F6) return window->RaiseNext(), true;
  return window->Translate(message) || (!GoesToText(message) && ::IsDialogMessageA(root, &message));
}

std::string TextOf(HWND hwnd) {
  std::string text(static_cast<std::size_t>(::GetWindowTextLengthA(hwnd)) + 1, '\0');
  text.resize(static_cast<std::size_t>(::GetWindowTextA(hwnd, text.data(), static_cast<int>(text.size()))));
  return text;
}

std::string TrimmedTextOf(HWND hwnd) { return std::string(core::Trim(TextOf(hwnd))); }

void LoadCommonControls() {
  INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_LINK_CLASS |
                                                     ICC_STANDARD_CLASSES | ICC_TREEVIEW_CLASSES};
  ::InitCommonControlsEx(&controls);
}

void SetTopMost(HWND window, bool onTop) {
  ::SetWindowPos(window, onTop ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, kTopMostFlags);
}

void RemoveCloseItem(HWND window) {
  const HMENU menu = ::GetSystemMenu(window, FALSE);
  ::RemoveMenu(menu, static_cast<UINT>(::GetMenuItemCount(menu) - 1), kRemoveFlags);
  ::DrawMenuBar(window);
}

Area CentredAround(const WindowStyle& style, int width, int height) {
  RECT frame{0, 0, width, height};
  ::AdjustWindowRectEx(&frame, style.style, FALSE, style.exStyle);
  return CentredIn(WorkAreaPixels(), frame.right - frame.left, frame.bottom - frame.top);
}

}  // namespace toolkit
