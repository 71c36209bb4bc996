// A minimal receiver: reads one datagram per window message, looks up the sender in a hash map, and answers a newcomer
// with three packets. The baseline for the cost of Quillon.
#include <winsock2.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>

namespace {

constexpr UINT kSocketMessage = WM_APP, kCountMessage = WM_APP + 1;  // the second one returns the number of senders
constexpr u_short kPort = 1414;
constexpr int kReceiveBuffer = 8 << 20;  // bytes, the same as Quillon's
constexpr std::string_view kName = "bare";

SOCKET theSocket = INVALID_SOCKET;
std::unordered_map<std::string, int> users;

sockaddr_in Address(u_long host) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(kPort);
  address.sin_addr.s_addr = host;
  return address;
}

void Send(std::string_view command) {
  std::string packet(kName);
  packet.append("|").append(command);
  const sockaddr_in everybody = Address(INADDR_BROADCAST);
  ::sendto(theSocket, packet.data(), static_cast<int>(packet.size()), 0, reinterpret_cast<const sockaddr*>(&everybody),
           sizeof everybody);
}

void Receive() {
  static char data[65536];
  const int length = ::recv(theSocket, data, sizeof data, 0);
  if (length <= 0) return;
  const std::string_view packet(data, static_cast<std::size_t>(length));
  const auto [user, isNew] = users.try_emplace(std::string(packet.substr(0, packet.find('|'))), 0);
  ++user->second;
  if (!isNew) return;
  for (const char* answer : {"M/", "C/ 0", "S/0"}) Send(answer);
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == kSocketMessage) {
    Receive();
    return 0;
  }
  if (message == kCountMessage) return static_cast<LRESULT>(users.size());
  if (message == WM_CLOSE) ::PostQuitMessage(0);
  return ::DefWindowProcA(window, message, wParam, lParam);
}

HWND MakeWindow() {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = Procedure;
  windowClass.lpszClassName = "BareReceiver";
  ::RegisterClassA(&windowClass);
  return ::CreateWindowExA(0, windowClass.lpszClassName, "", WS_OVERLAPPEDWINDOW, 0, 0, 200, 200, nullptr, nullptr,
                           nullptr, nullptr);
}

void OpenSocket(HWND window) {
  WSADATA winsock{};
  ::WSAStartup(MAKEWORD(2, 2), &winsock);
  theSocket = ::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
  const BOOL on = TRUE;
  for (const int option : {SO_REUSEADDR, SO_BROADCAST})
    ::setsockopt(theSocket, SOL_SOCKET, option, reinterpret_cast<const char*>(&on), sizeof on);
  ::setsockopt(theSocket, SOL_SOCKET, SO_RCVBUF, reinterpret_cast<const char*>(&kReceiveBuffer), sizeof kReceiveBuffer);
  const sockaddr_in any = Address(INADDR_ANY);
  ::bind(theSocket, reinterpret_cast<const sockaddr*>(&any), sizeof any);
  ::WSAAsyncSelect(theSocket, window, kSocketMessage, FD_READ);
}

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
  OpenSocket(MakeWindow());
  Send("M/");
  MSG message;
  while (::GetMessageA(&message, nullptr, 0, 0) > 0) ::DispatchMessageA(&message);
  return 0;
}
