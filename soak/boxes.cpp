// Prints the message boxes of a Windows installation as they appear, for the soak test: the monkey test may
// close one before polling from outside finds it. A line for each, with tabs between: the handle; 1 if a save
// dialog was open just before, else 0; the caption and the text in hexadecimal, two digits a byte. The first line says
// that it is ready.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>

namespace {

constexpr char kBoxClass[] = "#32770", kSaveClass[] = "frmSave";
constexpr UINT kPollInterval = 10;          // milliseconds
constexpr ULONGLONG kAfterSaving = 20'000;  // milliseconds in which an export may fail once the dialog has closed

ULONGLONG saving = 0;  // when a save dialog was last seen

void LookForSaveDialog() {
  if (::IsWindowVisible(::FindWindowA(kSaveClass, nullptr))) saving = ::GetTickCount64();
}

std::string ClassOf(HWND window) {
  char name[64] = "";
  ::GetClassNameA(window, name, sizeof name);
  return name;
}

// Without a message to the window: its program may be busy.
std::string TextOf(HWND window) {
  char text[4096] = "";
  ::GetWindowTextA(window, text, sizeof text);
  return text;
}

BOOL CALLBACK AddText(HWND control, LPARAM text) {
  if (ClassOf(control) == "Static") *reinterpret_cast<std::string*>(text) += TextOf(control);
  return TRUE;
}

std::set<HWND> reported;  // Wine reuses a handle only after tens of thousands of others

void Report(HWND box) {
  if (reported.contains(box)) return;
  LookForSaveDialog();
  std::string text = TextOf(box) + ": ";
  ::EnumChildWindows(box, AddText, reinterpret_cast<LPARAM>(&text));
  if (text.ends_with(": ") && !::IsWindowVisible(box)) return;  // its text is not set yet
  reported.insert(box);
  std::printf("%lu\t%d\t", static_cast<unsigned long>(HandleToUlong(box)),
              saving != 0 && ::GetTickCount64() - saving < kAfterSaving);
  for (const char c : text) std::printf("%02x", static_cast<unsigned char>(c));
  std::puts("");
  std::fflush(stdout);
}

// Most texts are set when the box gets the focus; Wine notifies only some windows of being shown.
void CALLBACK OnEvent(HWINEVENTHOOK, DWORD event, HWND window, LONG, LONG, DWORD, DWORD) {
  if (event == EVENT_OBJECT_CREATE && ClassOf(window) == kSaveClass) saving = ::GetTickCount64();
  const HWND box = ::GetAncestor(window, GA_ROOT);
  if (event == EVENT_OBJECT_FOCUS && ClassOf(box) == kBoxClass) Report(box);
}

// Reports boxes that did not get the focus, or got it before their texts were set.
void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
  LookForSaveDialog();
  for (HWND box = nullptr; (box = ::FindWindowExA(nullptr, box, kBoxClass, nullptr));)
    if (::IsWindowVisible(box)) Report(box);
}

void Watch(DWORD event) {
  if (!::SetWinEventHook(event, event, nullptr, OnEvent, 0, 0, WINEVENT_OUTOFCONTEXT)) std::exit(1);
}

}  // namespace

int main() {
  Watch(EVENT_OBJECT_CREATE);
  Watch(EVENT_OBJECT_FOCUS);
  ::SetTimer(nullptr, 0, kPollInterval, OnTimer);
  std::puts("ready");
  std::fflush(stdout);
  for (MSG message; ::GetMessageA(&message, nullptr, 0, 0) > 0;) ::DispatchMessageA(&message);
}
