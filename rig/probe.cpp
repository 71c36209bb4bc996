// Reads and operates the windows of the programs in one Windows installation, for the tests of whole copies. Reads
// commands from stdin, one a line, and answers each with any number of lines and a last one, "ok" or "error" with the
// reason. It keeps running, because starting a process for every command would be slow.
//
// Fields are separated by tabs. Texts are hexadecimal in both directions, two digits a byte.
#include <windows.h>
#include <commctrl.h>
#include <shellapi.h>

#include <algorithm>
#include <cstdio>
#include <iomanip>
#include <iostream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Fields = std::vector<std::string>;

constexpr UINT kSendTimeout = 60'000;  // milliseconds

std::string Hex(const std::string& text) {
  std::ostringstream digits;
  digits << std::hex << std::setfill('0');
  for (const char c : text) digits << std::setw(2) << int{static_cast<unsigned char>(c)};
  return digits.str();
}

std::string Text(const std::string& hex) {
  std::string text;
  for (std::size_t i = 0; i < hex.size(); i += 2) text += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  return text;
}

Fields Split(const std::string& line) {
  Fields fields;
  std::istringstream rest(line + '\t');
  for (std::string field; std::getline(rest, field, '\t');) fields.push_back(field);
  return fields;
}

long long Number(const std::string& text) { return std::stoll(text, nullptr, 0); }

HWND Window(const std::string& text) {
  const auto window = reinterpret_cast<HWND>(static_cast<ULONG_PTR>(Number(text)));
  if (!::IsWindow(window)) throw std::runtime_error("no such window");
  return window;
}

// With a timeout, so that a hanging program fails the test instead of hanging it.
LRESULT Send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  DWORD_PTR result = 0;
  if (!::SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, kSendTimeout, &result))
    throw std::runtime_error("the window does not respond");
  return static_cast<LRESULT>(result);
}

std::string TextOf(HWND window) {
  // Wine's rich edit control reports no length in double-byte code pages.
  const LRESULT length = std::max<LRESULT>(Send(window, WM_GETTEXTLENGTH, 0, 0), 4096);
  std::string text(static_cast<std::size_t>(length) + 1, '\0');
  const LRESULT copied = Send(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(copied));
  return text;
}

std::string ClassOf(HWND window) {
  char name[256] = "";
  ::GetClassNameA(window, name, sizeof name);
  return name;
}

// Prints nothing if the window is destroyed meanwhile.
void PrintWindow(HWND window) try {
  const std::string text = Hex(TextOf(window)), className = ClassOf(window);
  DWORD process = 0;
  ::GetWindowThreadProcessId(window, &process);
  RECT place{};
  ::GetWindowRect(window, &place);
  std::printf("%lu\t%s\t%lu\t%d\t%d\t%ld\t%ld\t%ld\t%ld\t%d\t%s\n", static_cast<unsigned long>(HandleToUlong(window)),
              className.c_str(), process, ::IsWindowVisible(window), ::IsWindowEnabled(window), place.left, place.top,
              place.right, place.bottom, ::GetDlgCtrlID(window), text.c_str());
} catch (const std::runtime_error&) {
  if (::IsWindow(window)) throw;
}

BOOL CALLBACK AddWindow(HWND window, LPARAM list) {
  reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

// The descendants of a window, or all top-level windows: of one class, or of every class if none is given.
void Windows(const Fields& fields) {
  std::vector<HWND> windows;
  const auto list = reinterpret_cast<LPARAM>(&windows);
  Number(fields.at(1)) ? ::EnumChildWindows(Window(fields[1]), AddWindow, list) : ::EnumWindows(AddWindow, list);
  for (const HWND window : windows)
    if (fields.at(2).empty() || ::lstrcmpiA(fields[2].c_str(), ClassOf(window).c_str()) == 0) PrintWindow(window);
}

void SetText(const Fields& fields) {
  Send(Window(fields.at(1)), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(Text(fields.at(2)).c_str()));
}

// Posts a text as typed characters. In Unicode: the system converts them to the bytes that the window expects.
void Type(const Fields& fields) {
  const HWND window = Window(fields.at(1));
  const std::string text = Text(fields.at(2));
  std::wstring wide(text.size(), L'\0');
  const int size = static_cast<int>(text.size());
  wide.resize(static_cast<std::size_t>(::MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), size)));
  for (const wchar_t letter : wide) ::PostMessageW(window, WM_CHAR, letter, 1);
}

// Calls a function with the window, message and arguments in the fields.
template <typename Function>
auto Pass(Function function, const Fields& fields) {
  return function(Window(fields.at(1)), static_cast<UINT>(Number(fields.at(2))),
                  static_cast<WPARAM>(Number(fields.at(3))), static_cast<LPARAM>(Number(fields.at(4))));
}

void Post(const Fields& fields) { Pass(::PostMessageA, fields); }

void SendAndPrint(const Fields& fields) { std::printf("%lld\n", static_cast<long long>(Pass(Send, fields))); }

// The foreground window.
void Foreground(const Fields&) { PrintWindow(::GetForegroundWindow()); }

// Shows a window without activating it: another process may not take the foreground.
void Show(const Fields& fields) { ::ShowWindowAsync(Window(fields.at(1)), SW_SHOWNA); }

// Memory in another process: a list view reads and writes items only at addresses of its own process.
class RemoteMemory {
 public:
  explicit RemoteMemory(HWND window) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    process_ = ::OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process);
    memory_ = static_cast<char*>(
        ::VirtualAllocEx(process_, nullptr, sizeof(LVITEMA) + kTextSize, MEM_COMMIT, PAGE_READWRITE));
    if (!memory_) throw std::runtime_error("no memory in the other process");
  }
  RemoteMemory(const RemoteMemory&) = delete;
  RemoteMemory& operator=(const RemoteMemory&) = delete;
  ~RemoteMemory() {
    ::VirtualFreeEx(process_, memory_, 0, MEM_RELEASE);
    ::CloseHandle(process_);
  }

  static constexpr int kTextSize = 1024;

  LPARAM Put(LVITEMA item) {
    item.pszText = memory_ + sizeof item;
    item.cchTextMax = kTextSize;
    ::WriteProcessMemory(process_, memory_, &item, sizeof item, nullptr);
    return reinterpret_cast<LPARAM>(memory_);
  }
  std::string Text() const {
    char text[kTextSize] = "";
    ::ReadProcessMemory(process_, memory_ + sizeof(LVITEMA), text, sizeof text - 1, nullptr);
    return text;
  }

 private:
  HANDLE process_ = nullptr;
  char* memory_ = nullptr;
};

// The rows of a list view, two columns each.
void Rows(const Fields& fields) {
  const HWND list = Window(fields.at(1));
  const LRESULT count = Send(list, LVM_GETITEMCOUNT, 0, 0);
  RemoteMemory memory(list);
  for (LRESULT row = 0; row < count; ++row) {
    for (int column = 0; column < 2; ++column) {
      LVITEMA item{};
      item.iSubItem = column;
      Send(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(row), memory.Put(item));
      std::printf("%s%s", column ? "\t" : "", Hex(memory.Text()).c_str());
    }
    std::puts("");
  }
}

// Selects or unselects a row, or all with -1.
void Select(const Fields& fields) {
  const HWND list = Window(fields.at(1));
  RemoteMemory memory(list);
  LVITEMA item{};
  item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
  if (Number(fields.at(3))) item.state = item.stateMask;
  Send(list, LVM_SETITEMSTATE, static_cast<WPARAM>(Number(fields.at(2))), memory.Put(item));
}

// Posts a registered message (TaskbarCreated, say) to all windows.
void Broadcast(const Fields& fields) {
  ::PostMessageA(HWND_BROADCAST, ::RegisterWindowMessageA(fields.at(1).c_str()), 0, 0);
}

// Removes the notification icon of a window without its owner's knowledge.
void LoseIcon(const Fields& fields) {
  NOTIFYICONDATAA icon{};
  icon.cbSize = NOTIFYICONDATAA_V1_SIZE;
  icon.hWnd = Window(fields.at(1));
  icon.uID = 1;
  if (!::Shell_NotifyIconA(NIM_DELETE, &icon)) throw std::runtime_error("no such icon");
}

void Answer(const std::string& line) {
  static const std::map<std::string, void (*)(const Fields&)> commands{
      {"windows", Windows},     {"settext", SetText}, {"post", Post},
      {"send", SendAndPrint},   {"rows", Rows},       {"select", Select},
      {"broadcast", Broadcast}, {"show", Show},       {"foreground", Foreground},
      {"loseicon", LoseIcon},   {"type", Type},
  };
  try {
    const Fields fields = Split(line);
    commands.at(fields[0])(fields);
    std::puts("ok");
  } catch (const std::exception& problem) {
    std::printf("error\t%s\n", problem.what());
  }
  std::fflush(stdout);
}

}  // namespace

// With an argument: whether a process that starts now has a desktop.
int main(int argc, char**) {
  if (argc > 1) return ::CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr) ? 0 : 1;
  for (std::string line; std::getline(std::cin, line);) Answer(line);
}
