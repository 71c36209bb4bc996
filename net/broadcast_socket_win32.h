// The broadcast socket sktBC: one UDP socket that notifies through a window message, so that datagrams are read between
// other window events.
#pragma once

#include <winsock2.h>
#include <windows.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string_view>

#include "net/datagram_port.h"

namespace net {

class BroadcastSocket : public DatagramPort {
 public:
  using Arrival = std::function<void(std::string_view)>;

  // Calls `arrival` for every datagram, on this thread, from the message loop. If `arrival` runs events, datagrams that
  // are read then cause nested calls, and the bytes of the outer datagram are overwritten. WakeIn calls `wake`.
  explicit BroadcastSocket(
      Arrival arrival, std::function<void()> wake = [] {});
  ~BroadcastSocket() override;
  BroadcastSocket(const BroadcastSocket&) = delete;
  BroadcastSocket& operator=(const BroadcastSocket&) = delete;

  void Open(int port) override;
  void Close() override;
  void Send(std::string_view bytes) override;
  void WakeIn(std::uint32_t milliseconds) override;

 private:
  using Clock = std::chrono::steady_clock;

  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam);
  void Handle(UINT message, WPARAM wParam);
  void StartWinsock();
  void CreateMessageWindow();
  void Read();
  bool ReadOne();
  void DropNotifications() const;
  void YieldToMessageLoop();
  void StopThrottling();
  void Wake();
  bool SendOne(std::string_view bytes);
  void SendLater(std::string_view bytes);
  void SendUnsent();
  void ClearUnsent();

  Arrival arrival_;
  std::function<void()> wake_;
  std::unique_ptr<char[]> buffer_;
  sockaddr_in everybody_{};
  SOCKET socket_ = INVALID_SOCKET;
  HWND hwnd_ = nullptr;
  bool winsockStarted_ = false;
  bool throttled_ = false;
  bool sendFails_ = false;
  bool dropsUnsent_ = false;
  UnsentQueue unsent_;
  int lastCount_ = 0;  // datagrams read on the last notification
  Clock::time_point lastRead_{}, lastYield_{};
};

}  // namespace net
