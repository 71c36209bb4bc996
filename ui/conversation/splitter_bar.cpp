#include "ui/conversation/splitter_bar.h"

#include <windowsx.h>

#include <utility>

#include "ui/toolkit/handles.h"
#include "ui/toolkit/screen.h"

namespace conversation {

using toolkit::Px;
using toolkit::Tw;

void SplitterBar::Create(HWND host) {
  host_ = host;
  picSep = toolkit::Created(::CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_CLIPSIBLINGS | SS_GRAYRECT, 0, 0, 0, 0,
                                              host, nullptr, toolkit::Instance(), nullptr));
}

bool SplitterBar::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SETCURSOR:
      if (reinterpret_cast<HWND>(wParam) != host_ || LOWORD(lParam) != HTCLIENT || !PointerIsOver()) return false;
      ::SetCursor(::LoadCursorA(nullptr, IDC_SIZENS));
      return true;
    case WM_LBUTTONDOWN: {
      const POINT at{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
      if (!IsOver(at)) return false;
      Press(at.y);
      return true;
    }
    case WM_MOUSEMOVE:
      if (!grip_) return false;
      Drag(GET_Y_LPARAM(lParam));
      return true;
    case WM_LBUTTONUP:
      if (!grip_) return false;
      Release();
      return true;
    case WM_CAPTURECHANGED:
      Cancel();
      return false;
    default:
      return false;
  }
}

bool SplitterBar::IsOver(POINT at) const {
  const RECT bar = toolkit::RectOf(imgSep);
  return ::PtInRect(&bar, at) != FALSE;
}

bool SplitterBar::PointerIsOver() const {
  POINT pointer{};
  ::GetCursorPos(&pointer);
  ::ScreenToClient(host_, &pointer);
  return IsOver(pointer);
}

void SplitterBar::Press(int y) {
  grip_ = y - imgSep.top;
  ::SetCapture(host_);
  Drag(y);
  ::ShowWindow(picSep, SW_SHOWNA);
}

void SplitterBar::Drag(int y) {
  dragTop_ = within(Tw(y - *grip_));
  ::SetWindowPos(picSep, HWND_TOP, 0, Px(dragTop_), imgSep.Width(), imgSep.Height(), SWP_NOACTIVATE);
}

void SplitterBar::Release() {
  const toolkit::Twips top = dragTop_;
  ::ReleaseCapture();  // hides the drag bar too
  moved(top);
}

// The capture was lost, or the button was released.
void SplitterBar::Cancel() {
  if (std::exchange(grip_, std::nullopt)) ::ShowWindow(picSep, SW_HIDE);
}

}  // namespace conversation
