// The base of every window of the program: a class registered under the window's name, a procedure that no exception
// leaves, and the keyboard of a dialog (Tab, Alt+letter) in every window.
//
// A window is owned by whoever opened it, through a shared_ptr. While one of its messages is handled the procedure
// holds a reference of its own, so that a window may be dropped from inside its own handler.
#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ui/toolkit/toolbar.h"

namespace toolkit {

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

 protected:
  Window() = default;

  // Creates the window, hidden, at a place in pixels. Call it after the window has its shared_ptr.
  void Create(const WindowStyle& style, const char* caption, RECT place, HWND owner = nullptr);

  // A child control in the dialog font. Its place comes from the layout.
  HWND AddControl(const char* className, const char* text, DWORD style, DWORD exStyle = 0, int id = 0);

  // The control that gets the keyboard when the window is activated for the first time. Giving it at once would
  // activate a hidden window.
  void FocusFirst(HWND control) { lastFocus_ = control; }

  // A control that has taken another one's place gets the keyboard where that one would have.
  void ControlReplaced(HWND before, HWND now) {
    if (lastFocus_ == before) lastFocus_ = now;
  }

  // Toolbars whose captions answer Alt+letter.
  void AnswersKeysOf(Toolbar& toolbar) { toolbars_.push_back(&toolbar); }

  // One message. The base answers what every window answers alike and hands the rest to Windows.
  virtual LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

  // Before Tab and Enter are translated as in a dialog; true when the message is used up.
  virtual bool Translate(MSG& message);

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  static void Register(const WindowStyle& style);
  LRESULT KeepLeastSize(WPARAM wParam, LPARAM lParam);
  static BOOL CALLBACK CollectReachable(HWND hwnd, LPARAM windows);
  void RaiseNext() const;
  friend bool FilterMessage(MSG& message);

  HWND hwnd_ = nullptr;
  HWND lastFocus_ = nullptr;  // where the keyboard was when the window lost it
  std::vector<Toolbar*> toolbars_;
};

// The filter of the event loop: dialog keys of whichever of our windows the message belongs to, and F6, which leads
// from one of them to the next.
bool FilterMessage(MSG& message);

// A window's text of any length.
std::string TextOf(HWND hwnd);

// Loads the system's lists, trees, toolbars and links: before the first of them is created.
void LoadCommonControls();

void SetTopMost(HWND window, bool onTop);

// Takes the last item, Close, off the window's system menu.
void RemoveCloseItem(HWND window);

}  // namespace toolkit
