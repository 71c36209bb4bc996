// The base of every window: a window class registered under the window's name, a procedure that catches all exceptions,
// and dialog keys (Tab, Alt+letter).
//
// Whoever opens a window owns it through a shared_ptr. The procedure holds another reference while it handles a
// message, so that a window may be released in its own handler.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "ui/toolkit/caption.h"
#include "ui/toolkit/toolbar.h"
#include "ui/toolkit/units.h"

namespace toolkit {

class Window;
class WindowMenu;

// A row of a window's command table: the handler of a menu item, a button or a control's notification. `notification`
// is its code (EN_CHANGE, LBN_DBLCLK), 0 for menus and buttons.
class Command {
 public:
  template <class Form>
  Command(unsigned id, void (Form::*run)(), unsigned notification = 0)
      : id_(id), notification_(notification), run_(static_cast<void (Window::*)()>(run)) {}

  // For a range of consecutive ids. The function gets the index in it, from 0.
  template <class Form>
  Command(unsigned firstId, unsigned count, void (Form::*run)(unsigned index))
      : id_(firstId), count_(count), runIndexed_(static_cast<void (Window::*)(unsigned)>(run)) {}

  // Runs it if it has this id; true if it did.
  bool Run(Window& window, unsigned id, unsigned notification) const;

 private:
  unsigned id_, count_ = 1, notification_ = 0;
  void (Window::*run_)() = nullptr;
  void (Window::*runIndexed_)(unsigned) = nullptr;
};

struct WindowStyle {
  const char* className;
  DWORD style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
  DWORD exStyle = 0;
  int background = COLOR_BTNFACE;
};

class Window : public std::enable_shared_from_this<Window> {
 public:
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window();

  HWND hwnd() const { return hwnd_; }

  // Raised once, when the window has been destroyed.
  std::function<void()> onDestroyed;

  void Show(int command = SW_SHOWNORMAL) { ::ShowWindow(hwnd_, command); }

  // Shows the window, restores it if minimised, and brings it to the front.
  void Raise();

  // The object of a window of this program, null for all others.
  static Window* Of(HWND hwnd);

  std::string Text() const;

  // Updates all captions in the window to the current language. Each call decides once, for the whole window, whether
  // captions come from the language file: a missing text is then empty, and the others stay in their language. When
  // they do not come from the file, the window keeps its captions.
  virtual void SetLan();

  // Updates every open window, in order of creation.
  static void SetLanOfAll();

 protected:
  Window() = default;

  // Creates the window, hidden, at a place in pixels. The object must be owned by a shared_ptr already. Like
  // AddControl, it throws core::Err::OutOfMemory when the window cannot be created.
  void Create(const WindowStyle& style, const Caption& title, const Area& place, HWND owner = nullptr);

  // Creates a child control with the dialog font. LayOut places it.
  HWND AddControl(const char* className, const Caption& text, DWORD style, DWORD exStyle = 0, int id = 0);

  // Creates a toolbar with mnemonics and keyboard support.
  void AddToolbar(Toolbar& toolbar, std::span<const ToolButton> buttons);

  // Adds the name that screen readers announce for a part without a text of its own; marks of the caption markup are
  // removed. The first form passes it to `show`, now and after each language change; the second one attaches it to the
  // next control, by a hidden label before it in the tab order.
  void AddName(Caption name, std::function<void(const std::string& name)> show);
  void AddName(const Caption& name);

  // Sets the window's menu.
  void AddMenu(WindowMenu& menu);

  // Calls `show` now and after each language change; a child uses its top-level window's language. AddControl and
  // AddToolbar do this for their captions.
  void AddCaption(const Caption& caption, std::function<void(const std::string& text)> show);

  // Places all controls; also called when captions have changed.
  virtual void LayOut() {}

  // Sets the minimum size of the window.
  void SetMinSize(Twips width, Twips height) { minWidth_ = width, minHeight_ = height; }

  // The control that gets the focus when the window is activated first. Setting the focus now would activate a hidden
  // window.
  void FocusFirst(HWND control) { firstFocus_ = control; }

  // Replaces a control as the one that gets the focus.
  void ControlReplaced(HWND before, HWND now) {
    if (lastFocus_ == before) lastFocus_ = now;
  }

  // The window's commands, dispatched by Handle.
  virtual std::span<const Command> Commands() const { return {}; }

  // Runs the command with this id; false when there is none.
  bool RunCommand(unsigned id, unsigned notification = 0);

  // Handles a message. The base handles what all windows have in common and passes the rest to Windows.
  virtual LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

  // Called before the dialog keys are handled; true when the message was handled.
  virtual bool Translate(MSG& message);

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  static void Register(const WindowStyle& style);
  LRESULT KeepMinSize(WPARAM wParam, LPARAM lParam);
  void RememberFocus();
  void PassFocusOn() const;
  static BOOL CALLBACK CollectReachable(HWND hwnd, LPARAM windows);
  void RaiseNext() const;
  friend bool FilterMessage(MSG& message);

  struct ShownCaption {
    Caption caption;
    std::function<void(const std::string& text)> show;
  };

  static inline std::vector<Window*> open_;  // in order of creation, including children

  HWND hwnd_ = nullptr;
  Twips minWidth_, minHeight_;
  HWND firstFocus_ = nullptr;
  HWND lastFocus_ = nullptr;  // the focus when the window lost it
  std::vector<Toolbar*> toolbars_;
  WindowMenu* menu_ = nullptr;
  std::vector<ShownCaption> captions_;  // including those of child windows
  bool fromLanguageFile_ = false;       // whether the captions come from there
};

// The filter of the event loop: dialog keys of the program's windows, and F6, which switches between them.
bool FilterMessage(MSG& message);

// The rectangle of a window without a menu, with a client area of this size, centred in the work area. Pixels.
Area CentredAround(const WindowStyle& style, int width, int height);

// Whether a key (VK_...) was down at the current keyboard message.
inline bool KeyDown(int key) { return ::GetKeyState(key) < 0; }

// A window's text of any length, and the same trimmed.
std::string TextOf(HWND hwnd);
std::string TrimmedTextOf(HWND hwnd);

// Loads the system's lists, trees, toolbars and links. Call it before creating one.
void LoadCommonControls();

void SetTopMost(HWND window, bool onTop);

// Removes the last item, Close, from the window's system menu.
void RemoveCloseItem(HWND window);

}  // namespace toolkit
