#include "net/broadcast_socket_win32.h"

#include <array>
#include <utility>

#include "core/callback_guard.h"
#include "core/event_loop_win32.h"
#include "core/log.h"
#include "core/runtime_error.h"

namespace net {
namespace {

constexpr char kClassName[] = "sktBC";
constexpr UINT kReadable = WM_APP;
constexpr UINT_PTR kThrottleTimer = 1, kWakeTimer = 2, kRetryTimer = 3;

constexpr int kMaxDatagram = 65535;

// Large enough for the answers of thousands of copies while the program is busy, including the system's overhead for
// each datagram.
constexpr int kReceiveBuffer = 8 * 1024 * 1024;
constexpr int kSendBuffer = 1024 * 1024;  // an alert to many recipients is one datagram for each

// Limits on what one notification reads, and the interval at which other events are handled. Notifications are posted
// messages, which Windows delivers before input, painting and timers: a steady stream of them would freeze the windows.
constexpr int kMaxPerMessage = 64;
constexpr std::chrono::milliseconds kMaxTime{8};
constexpr std::chrono::milliseconds kYieldInterval{15};
constexpr UINT kThrottleTime = 10;  // milliseconds
constexpr UINT kRetryTime = 1000;   // milliseconds, while the network is down

// Arrivals closer than this count as a burst, and so does more than one datagram per notification. Only then is the
// socket drained: at other times the extra recv would cost as much as the first and find nothing.
constexpr std::chrono::microseconds kBurstGap{200};

struct SocketError {
  int number;
  const char* text;
};

constexpr SocketError kErrors[] = {
    {WSAEACCES, "Permission denied"},
    {WSAEINVAL, "Invalid argument"},
    {WSAEMFILE, "Too many open files"},
    {WSAEPROTONOSUPPORT, "Protocol not supported"},
    {WSAEAFNOSUPPORT, "Address family not supported"},
    {WSAEADDRINUSE, "Address already in use"},
    {WSAEADDRNOTAVAIL, "Cannot assign requested address"},
    {WSAENETDOWN, "Network is down"},
    {WSAENETUNREACH, "Network is unreachable"},
    {WSAEHOSTUNREACH, "No route to host"},
    {WSAEWOULDBLOCK, "Resource temporarily unavailable"},
    {WSAENOBUFS, "No buffer space available"},
    {WSASYSNOTREADY, "Network subsystem is unavailable"},
    {WSAVERNOTSUPPORTED, "Winsock version not supported"},
};

core::RuntimeError ErrorOf(int number) {
  for (const SocketError& error : kErrors)
    if (error.number == number) return {number, error.text};
  return {number, "Socket error"};
}

[[noreturn]] void Fail(int number) { throw ErrorOf(number); }

// Errors of an unplugged cable, a change of networks, or a full send buffer.
bool IsTemporary(int number) {
  return number == WSAENETDOWN || number == WSAENETUNREACH || number == WSAEHOSTUNREACH || number == WSAEADDRNOTAVAIL ||
         number == WSAENOBUFS || number == WSAEWOULDBLOCK;
}

void SetOption(SOCKET socket, int option, int value) {
  ::setsockopt(socket, SOL_SOCKET, option, reinterpret_cast<const char*>(&value), sizeof value);
}

sockaddr_in AddressOf(ULONG host, int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = ::htonl(host);
  address.sin_port = ::htons(static_cast<u_short>(port));
  return address;
}

int BindTo(SOCKET socket, const sockaddr_in& address) {
  return ::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

}  // namespace

BroadcastSocket::BroadcastSocket(Arrival arrival, std::function<void()> wake)
    : arrival_(std::move(arrival)), wake_(std::move(wake)), buffer_(std::make_unique<char[]>(kMaxDatagram)) {}

BroadcastSocket::~BroadcastSocket() {
  Close();
  if (hwnd_) ::DestroyWindow(hwnd_);
  if (winsockStarted_) ::WSACleanup();
}

void BroadcastSocket::Open(int port) {
  Close();
  StartWinsock();
  CreateMessageWindow();
  socket_ = ::socket(AF_INET, SOCK_DGRAM, IPPROTO_UDP);
  if (socket_ == INVALID_SOCKET) Fail(::WSAGetLastError());
  SetOption(socket_, SO_REUSEADDR, 1);  // copies of several users on one machine share the port
  SetOption(socket_, SO_BROADCAST, 1);
  SetOption(socket_, SO_RCVBUF, kReceiveBuffer);
  SetOption(socket_, SO_SNDBUF, kSendBuffer);
  everybody_ = AddressOf(INADDR_BROADCAST, port);
  const bool failed = BindTo(socket_, AddressOf(INADDR_ANY, port)) == SOCKET_ERROR ||
                      ::WSAAsyncSelect(socket_, hwnd_, kReadable, FD_READ) == SOCKET_ERROR;
  if (!failed) return;
  const int error = ::WSAGetLastError();
  Close();
  Fail(error);
}

void BroadcastSocket::Close() {
  if (socket_ == INVALID_SOCKET) return;
  ::closesocket(std::exchange(socket_, INVALID_SOCKET));
  StopThrottling();
  ClearUnsent();
  ::KillTimer(hwnd_, kWakeTimer);
}

// Queued behind unsent datagrams, to keep the order: a name is announced before its texts. These are retried first:
// a full send buffer drains long before the timer, and Close drops the queue.
void BroadcastSocket::Send(std::string_view bytes) {
  if (socket_ == INVALID_SOCKET) return;
  if (!unsent_.Empty()) SendUnsent();
  if (!unsent_.Empty() || !SendOne(bytes)) SendLater(bytes);
}

// False on a temporary failure. Successive failures are logged once.
bool BroadcastSocket::SendOne(std::string_view bytes) {
  const bool sent = ::sendto(socket_, bytes.data(), static_cast<int>(bytes.size()), 0,
                             reinterpret_cast<const sockaddr*>(&everybody_), sizeof everybody_) != SOCKET_ERROR;
  const int error = sent ? 0 : ::WSAGetLastError();
  if (error == WSAEMSGSIZE) return true;  // says nothing about the network
  const bool failedBefore = std::exchange(sendFails_, !sent);
  if (sendFails_ && !failedBefore) core::WriteLog("Unable to send: " + core::NumberAndDescription(ErrorOf(error)));
  return !IsTemporary(error);
}

// Nothing repeats a datagram. Without this queue, a machine that starts before its network is up would never be listed.
// Dropped datagrams are logged once for each outage.
void BroadcastSocket::SendLater(std::string_view bytes) {
  const bool dropped = !unsent_.Add(bytes);
  if (dropped && !std::exchange(dropsUnsent_, true)) core::WriteLog("Too much to send: packets are dropped");
  ::SetTimer(hwnd_, kRetryTimer, kRetryTime, nullptr);
}

void BroadcastSocket::SendUnsent() {
  while (!unsent_.Empty() && SendOne(unsent_.Front())) unsent_.RemoveFront();
  if (unsent_.Empty()) ClearUnsent();
}

void BroadcastSocket::ClearUnsent() {
  ::KillTimer(hwnd_, kRetryTimer);
  unsent_.Clear();
  dropsUnsent_ = false;
}

// WM_TIMER has the lowest priority, so during a burst reading goes first.
void BroadcastSocket::WakeIn(std::uint32_t milliseconds) {
  if (socket_ != INVALID_SOCKET) ::SetTimer(hwnd_, kWakeTimer, milliseconds, nullptr);
}

void BroadcastSocket::StartWinsock() {
  if (winsockStarted_) return;
  WSADATA data;
  if (const int error = ::WSAStartup(MAKEWORD(2, 2), &data)) Fail(error);
  winsockStarted_ = true;
}

void BroadcastSocket::CreateMessageWindow() {
  if (hwnd_) return;
  WNDCLASSEXA windowClass{};
  windowClass.cbSize = sizeof windowClass;
  windowClass.lpfnWndProc = Procedure;
  windowClass.hInstance = ::GetModuleHandleA(nullptr);
  windowClass.lpszClassName = kClassName;
  ::RegisterClassExA(&windowClass);
  hwnd_ = ::CreateWindowExA(0, kClassName, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, windowClass.hInstance, nullptr);
  ::SetWindowLongPtrA(hwnd_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

LRESULT CALLBACK BroadcastSocket::Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* self = reinterpret_cast<BroadcastSocket*>(::GetWindowLongPtrA(hwnd, GWLP_USERDATA));
  if (!self || (message != kReadable && message != WM_TIMER)) return ::DefWindowProcA(hwnd, message, wParam, lParam);
  core::Guarded([&] { self->Handle(message, wParam); });
  return 0;
}

// A notification may belong to a closed socket: ignore it. Notifications skipped while throttled are made up for by the
// timer's read.
void BroadcastSocket::Handle(UINT message, WPARAM wParam) {
  if (message == WM_TIMER && wParam == kWakeTimer) {
    Wake();
  } else if (message == WM_TIMER && wParam == kRetryTimer) {
    SendUnsent();
  } else if (message == WM_TIMER) {
    StopThrottling();
    Read();
  } else if (!throttled_ && static_cast<SOCKET>(wParam) == socket_) {
    Read();
  }
}

void BroadcastSocket::Read() {
  const auto start = Clock::now();
  const int maxCount = lastCount_ > 1 || start - lastRead_ < kBurstGap ? kMaxPerMessage : 1;
  if (maxCount > 1) DropNotifications();
  int count = 0;
  while (count < maxCount && ReadOne() && Clock::now() - start < kMaxTime) ++count;
  lastCount_ = count;
  lastRead_ = Clock::now();
  YieldToMessageLoop();
}

// Each recv posts another notification while there is more to read. During a flood the accumulated ones would delay
// every other posted message, such as a menu command.
void BroadcastSocket::DropNotifications() const {
  MSG message;
  while (::PeekMessageA(&message, hwnd_, kReadable, kReadable, PM_REMOVE)) {
  }
}

// False when there is nothing to read. Unreadable and empty datagrams are skipped.
bool BroadcastSocket::ReadOne() {
  if (socket_ == INVALID_SOCKET) return false;
  const int length = ::recv(socket_, buffer_.get(), kMaxDatagram, 0);
  if (length > 0) arrival_({buffer_.get(), static_cast<std::size_t>(length)});
  return length >= 0 || ::WSAGetLastError() != WSAEWOULDBLOCK;
}

// Input must reach the loop that waits for it, which may be that of an open menu, so reading is throttled. Timers and
// painting can be handled here; throttling for them would halve the throughput. GetQueueStatus is expensive, hence the
// interval.
void BroadcastSocket::YieldToMessageLoop() {
  if (lastRead_ - lastYield_ < kYieldInterval) return;
  lastYield_ = lastRead_;  // a timer that runs events must not re-enter
  const DWORD waiting = HIWORD(::GetQueueStatus(QS_INPUT | QS_PAINT | QS_TIMER));
  if (waiting & QS_INPUT)
    throttled_ = ::SetTimer(hwnd_, kThrottleTimer, kThrottleTime, nullptr) != 0;
  else if (waiting != 0)
    core::RunTimersAndPainting();
  lastYield_ = Clock::now();
}

void BroadcastSocket::Wake() {
  ::KillTimer(hwnd_, kWakeTimer);
  if (socket_ != INVALID_SOCKET) wake_();  // a timer message may arrive after Close
}

void BroadcastSocket::StopThrottling() {
  if (!throttled_) return;
  ::KillTimer(hwnd_, kThrottleTimer);
  throttled_ = false;
}

}  // namespace net
