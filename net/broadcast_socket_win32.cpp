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
constexpr UINT_PTR kRestTimer = 1, kWakeTimer = 2, kRetryTimer = 3;

constexpr int kLargestDatagram = 65535;

// Thousands of copies may answer at once, or a user's windows may take their time: what arrives meanwhile waits here,
// with the system's own cost per datagram on top.
constexpr int kReceiveBuffer = 8 * 1024 * 1024;
constexpr int kSendBuffer = 1024 * 1024;  // an alert for each of a crowd of recipients

// What one window message may read, in datagrams and time, and how often the other events get their chance. Messages of
// the socket are posted ones, and Windows serves those before input, painting and timers: a steady stream of datagrams
// would freeze the windows.
constexpr int kMaxPerMessage = 64;
constexpr std::chrono::milliseconds kMaxTime{8};
constexpr std::chrono::milliseconds kTurn{15};
constexpr UINT kRestTime = 10;     // milliseconds
constexpr UINT kRetryTime = 1000;  // milliseconds, while the network is out

// Datagrams come in a crowd when the next message follows so soon, and while there is more than one to read. Only then
// is the socket asked again and again until it is empty: in quiet times the second question would cost as much as the
// first and find nothing.
constexpr std::chrono::microseconds kCrowd{200};

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

// Of a cable that is out, a machine between two networks, or more than the system can send at once.
bool WillPass(int number) {
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
    : arrival_(std::move(arrival)), wake_(std::move(wake)), buffer_(std::make_unique<char[]>(kLargestDatagram)) {}

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
  SetOption(socket_, SO_REUSEADDR, 1);  // the copies of two users of one machine share the port
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
  EndRest();
  ForgetUnsent();
  ::KillTimer(hwnd_, kWakeTimer);
}

// Behind what waits already: a name must be told before its texts.
void BroadcastSocket::Send(std::string_view bytes) {
  if (socket_ == INVALID_SOCKET) return;
  if (!unsent_.empty() || !SendOne(bytes)) SendLater(bytes);
}

// False when the network refuses it for now. An outage is noted once, however much is sent while it lasts.
bool BroadcastSocket::SendOne(std::string_view bytes) {
  const bool sent = ::sendto(socket_, bytes.data(), static_cast<int>(bytes.size()), 0,
                             reinterpret_cast<const sockaddr*>(&everybody_), sizeof everybody_) != SOCKET_ERROR;
  const int error = sent ? 0 : ::WSAGetLastError();
  const bool wasOut = std::exchange(networkIsOut_, WillPass(error));
  if (networkIsOut_ && !wasOut) core::WriteLog("Unable to send: " + core::NumberAndDescription(ErrorOf(error)));
  return !networkIsOut_;
}

// Nobody repeats a datagram. What is said while the cable is out, the joining of a machine that was started without a
// network above all, would never be known to anybody.
void BroadcastSocket::SendLater(std::string_view bytes) {
  if (unsent_.size() >= kMaxUnsent || unsentBytes_ + bytes.size() > kMaxUnsentBytes) return;
  unsent_.emplace_back(bytes);
  unsentBytes_ += bytes.size();
  ::SetTimer(hwnd_, kRetryTimer, kRetryTime, nullptr);
}

void BroadcastSocket::SendUnsent() {
  while (!unsent_.empty() && SendOne(unsent_.front())) {
    unsentBytes_ -= unsent_.front().size();
    unsent_.pop_front();
  }
  if (unsent_.empty()) ForgetUnsent();
}

void BroadcastSocket::ForgetUnsent() {
  ::KillTimer(hwnd_, kRetryTimer);
  unsent_.clear();
  unsentBytes_ = 0;
}

// A timer of the system comes after everything that was posted: in a burst reading goes first.
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

// A message may be older than the socket that is open now, or come while there is none. Reading answers the system's
// next message, so one that is passed over during a rest is made up for when the rest ends.
void BroadcastSocket::Handle(UINT message, WPARAM wParam) {
  if (message == WM_TIMER && wParam == kWakeTimer) {
    Wake();
  } else if (message == WM_TIMER && wParam == kRetryTimer) {
    SendUnsent();
  } else if (message == WM_TIMER) {
    EndRest();
    Read();
  } else if (!resting_ && static_cast<SOCKET>(wParam) == socket_) {
    Read();
  }
}

void BroadcastSocket::Read() {
  const auto start = Clock::now();
  const int most = lastCount_ > 1 || start - lastRead_ < kCrowd ? kMaxPerMessage : 1;
  if (most > 1) ForgetMessages();
  int count = 0;
  while (count < most && ReadOne() && Clock::now() - start < kMaxTime) ++count;
  lastCount_ = count;
  lastRead_ = Clock::now();
  YieldToMessageLoop();
}

// Each datagram read brings a message of its own while there are more. Those that piled up would stand before
// everything else that was posted, a chosen menu command say, for as long as a flood lasts.
void BroadcastSocket::ForgetMessages() const {
  MSG message;
  while (::PeekMessageA(&message, hwnd_, kReadable, kReadable, PM_REMOVE)) {
  }
}

// False when nothing waits. A datagram that cannot be read is lost, and an empty one says nothing.
bool BroadcastSocket::ReadOne() {
  if (socket_ == INVALID_SOCKET) return false;
  const int length = ::recv(socket_, buffer_.get(), kLargestDatagram, 0);
  if (length > 0) arrival_({buffer_.get(), static_cast<std::size_t>(length)});
  return length >= 0 || ::WSAGetLastError() != WSAEWOULDBLOCK;
}

// Input must reach the loop that waits for it, which may be that of an open menu: the reading stops for a while. Timers
// and painting are the same whoever dispatches them, and resting for each of the program's timers would cost half of
// the speed. Looks now and then only, because asking is not cheap.
void BroadcastSocket::YieldToMessageLoop() {
  if (lastRead_ - lastTurn_ < kTurn) return;
  lastTurn_ = lastRead_;  // a timer that lets events run must not come back here
  const DWORD waiting = HIWORD(::GetQueueStatus(QS_INPUT | QS_PAINT | QS_TIMER));
  if (waiting & QS_INPUT)
    resting_ = ::SetTimer(hwnd_, kRestTimer, kRestTime, nullptr) != 0;
  else if (waiting != 0)
    core::RunTimersAndPainting();
  lastTurn_ = Clock::now();
}

void BroadcastSocket::Wake() {
  ::KillTimer(hwnd_, kWakeTimer);
  if (socket_ != INVALID_SOCKET) wake_();  // the message may be older than the closing
}

void BroadcastSocket::EndRest() {
  if (!resting_) return;
  ::KillTimer(hwnd_, kRestTimer);
  resting_ = false;
}

}  // namespace net
