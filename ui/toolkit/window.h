// The base of every window of the program: a class registered under the window's name, a procedure that no exception
// leaves, and the keyboard of a dialog (Tab, Alt+letter) in every window.
//
// A window is owned by whoever opened it, through a shared_ptr. While one of its messages is handled the procedure
// holds a reference of its own, so that a window may be dropped from inside its own handler.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "ui/toolkit/area.h"
#include "ui/toolkit/caption.h"
#include "ui/toolkit/toolbar.h"
#include "ui/toolkit/units.h"

namespace toolkit {

class Window;
class WindowMenu;

// One row of a window's table of commands: what runs when a menu item or a button is chosen, or when a control tells of
// something. `notification` is the code of what it tells (EN_CHANGE, LBN_DBLCLK); menus and buttons have 0.
class Command {
 public:
  template <class Form>
  Command(unsigned id, void (Form::*run)(), unsigned notification = 0)
      : id_(id), notification_(notification), run_(static_cast<void (Window::*)()>(run)) {}

  // Of an array with consecutive ids. The function takes the place in it, from 0.
  template <class Form>
  Command(unsigned firstId, unsigned count, void (Form::*run)(unsigned index))
      : id_(firstId), count_(count), runIndexed_(static_cast<void (Window::*)(unsigned)>(run)) {}

  // Runs it and returns true if it is the command of this id.
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

  // Raised once, when the window is gone from the screen.
  std::function<void()> onDestroyed;

  void Show(int command = SW_SHOWNORMAL) { ::ShowWindow(hwnd_, command); }

  // Out of a minimised state, visible and in front.
  void Raise();

  // The object of a window of ours, null for all others.
  static Window* Of(HWND hwnd);

  std::string Text() const;

  // Captions the window and everything in it in the language in force. Whether captions come from the language file is
  // decided here, once for all parts and until the next call: a text that the file lacks is shown empty, and the others
  // do not turn English beside it. While they do not come from there, the window keeps the captions that it has.
  virtual void SetLan();

  // After a change of the language: every open window, in the order in which they were made.
  static void SetLanOfAll();

 protected:
  Window() = default;

  // Creates the window, hidden, at a place in pixels. Call it after the window has its shared_ptr. Like AddControl, it
  // throws core::Err::OutOfMemory when the desktop has no room for another window.
  void Create(const WindowStyle& style, const Caption& title, const Area& place, HWND owner = nullptr);

  // A child control in the dialog font. Its place comes from the layout.
  HWND AddControl(const char* className, const Caption& text, DWORD style, DWORD exStyle = 0, int id = 0);

  // A toolbar that answers Alt+letter and the other keys.
  void AddToolbar(Toolbar& toolbar, std::span<const ToolButton> buttons);

  // What screen readers call a part that shows no text of its own; an authored caption names it without its marks.
  // Given to `show`, as AddCaption does, or to the control that is created next: by a label before it in the order of
  // Tab, which nobody sees.
  void AddName(Caption name, std::function<void(const std::string& name)> show);
  void AddName(const Caption& name);

  // The window's menu.
  void AddMenu(WindowMenu& menu);

  // Hands a text to `show` now and after each change of the language, in the language of the window around this one if
  // this is a child of it. AddControl and AddToolbar do so with theirs.
  void AddCaption(const Caption& caption, std::function<void(const std::string& text)> show);

  // Gives all controls their places; called when captions have changed, too.
  virtual void LayOut() {}

  // Windows keeps the window from becoming smaller.
  void SetMinSize(Twips width, Twips height) { minWidth_ = width, minHeight_ = height; }

  // The control that gets the keyboard with the window unless another one had it before. Giving it at once would
  // activate a hidden window.
  void FocusFirst(HWND control) { firstFocus_ = control; }

  // A control that has taken another one's place gets the keyboard where that one would have.
  void ControlReplaced(HWND before, HWND now) {
    if (lastFocus_ == before) lastFocus_ = now;
  }

  // The window's commands, dispatched by Handle.
  virtual std::span<const Command> Commands() const { return {}; }

  // Runs the command of this id, as its menu item or its button does; false when the window has none.
  bool RunCommand(unsigned id, unsigned notification = 0);

  // One message. The base answers what every window answers alike and hands the rest to Windows.
  virtual LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

  // Before Tab and Enter are translated as in a dialog; true when the message is used up.
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

  static inline std::vector<Window*> open_;  // in the order of making, children too

  HWND hwnd_ = nullptr;
  Twips minWidth_, minHeight_;
  HWND firstFocus_ = nullptr;
  HWND lastFocus_ = nullptr;  // where the keyboard was when the window lost it
  std::vector<Toolbar*> toolbars_;
  WindowMenu* menu_ = nullptr;
  std::vector<ShownCaption> captions_;  // those of child windows too
  bool fromLanguageFile_ = false;       // whether the captions come from there
};

// The filter of the event loop: dialog keys of whichever of our windows the message belongs to, and F6, which leads
// from one of them to the next.
bool FilterMessage(MSG& message);

// In the middle of the work area, for a window without a menu whose inside takes this size. Pixels.
Area CentredAround(const WindowStyle& style, int width, int height);

// While a message of the keyboard is handled: whether a key (VK_...) is held.
inline bool KeyDown(int key) { return ::GetKeyState(key) < 0; }

// A window's text of any length, and the same without the blanks around it.
std::string TextOf(HWND hwnd);
std::string TrimmedTextOf(HWND hwnd);

// Loads the system's lists, trees, toolbars and links: before the first of them is created.
void LoadCommonControls();

void SetTopMost(HWND window, bool onTop);

// Takes the last item, Close, off the window's system menu.
void RemoveCloseItem(HWND window);

}  // namespace toolkit
