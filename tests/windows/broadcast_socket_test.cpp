// The broadcast socket with a real Winsock, on a private network, where it receives its own broadcasts.
#include "net/broadcast_socket_win32.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "core/event_loop.h"
#include "core/runtime_error.h"
#include "net/packet.h"

namespace net {
namespace {

class BroadcastSocketTest : public testing::Test {
 protected:
  // Runs events until this many datagrams were received; false on a time-out.
  bool Hear(std::size_t count, DWORD milliseconds = 5000) {
    const DWORD start = ::GetTickCount();
    while (heard.size() < count && ::GetTickCount() - start < milliseconds) {
      core::WaitForEvent(20);
      core::RunPendingEvents();
    }
    return heard.size() >= count;
  }

  std::vector<std::string> heard;
  std::function<void()> onArrival;
  int woken = 0;
  BroadcastSocket socket{[this](std::string_view data) {
                           heard.emplace_back(data);
                           if (onArrival) onArrival();
                         },
                         [this] { ++woken; }};
};

TEST_F(BroadcastSocketTest, ReceivesItsOwnDatagramsInOrder) {
  socket.Open(kPort);
  const std::string largest(kMaxPacket, '\xDE'), withZero("a\0b", 3);
  socket.Send("first");
  socket.Send("");
  socket.Send(withZero);
  socket.Send(largest);
  socket.Send(largest + "x");
  ASSERT_TRUE(Hear(3));
  EXPECT_FALSE(Hear(4, 100));
  EXPECT_EQ(heard, (std::vector<std::string>{"first", withZero, largest}));
}

TEST_F(BroadcastSocketTest, SendsNothingWhileClosedAndReopens) {
  socket.Send("before it opens");
  socket.Open(kPort);
  socket.Send("never read");
  socket.WakeIn(10);
  socket.Close();
  socket.Close();
  socket.Send("after it closed");
  socket.WakeIn(10);
  EXPECT_FALSE(Hear(1, 100));
  EXPECT_EQ(woken, 0);
  for (int i = 0; i < 2; ++i) socket.Open(kPort);
  socket.Send("again");
  ASSERT_TRUE(Hear(1));
  EXPECT_EQ(heard, std::vector<std::string>{"again"});
  for (const std::uint32_t milliseconds : {10000u, 10u}) socket.WakeIn(milliseconds);
  EXPECT_FALSE(Hear(2, 200));
  EXPECT_EQ(woken, 1);
}

// All of them are sent before the first one is read.
TEST_F(BroadcastSocketTest, ABurstOfThousandsIsKept) {
  constexpr std::size_t kCrowd = 5000;
  socket.Open(kPort);
  const SOCKET probe = ::socket(AF_INET, SOCK_DGRAM, 0);
  int granted = 8 * 1024 * 1024, size = sizeof granted;
  ::setsockopt(probe, SOL_SOCKET, SO_RCVBUF, reinterpret_cast<const char*>(&granted), size);
  ::getsockopt(probe, SOL_SOCKET, SO_RCVBUF, reinterpret_cast<char*>(&granted), &size);
  ::closesocket(probe);
  if (granted < 4 * 1024 * 1024) GTEST_SKIP() << "this system grants a receive buffer of " << granted << " bytes only";
  for (std::size_t i = 0; i < kCrowd; ++i) socket.Send("user" + std::to_string(i) + "|M/");
  EXPECT_TRUE(Hear(kCrowd)) << heard.size();
}

// Posted messages have priority over input and timers: without throttling, a flood would block both. Timers are last.
TEST_F(BroadcastSocketTest, TimersRunDuringAFlood) {
  static int ticks = 0;
  socket.Open(kPort);
  socket.WakeIn(100);
  std::atomic<bool> stop = false;
  std::thread flood([&] {
    BroadcastSocket out([](std::string_view) {});
    out.Open(kPort);
    while (!stop) out.Send("flood");
  });
  onArrival = [] { ::Sleep(1); };  // slower than the flood
  const UINT_PTR timer = ::SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR, DWORD) CALLBACK { ++ticks; });
  const DWORD start = ::GetTickCount();
  while ((ticks < 10 || woken == 0 || heard.size() < 100) && ::GetTickCount() - start < 30000) {
    MSG message;
    ::GetMessageA(&message, nullptr, 0, 0);
    ::DispatchMessageA(&message);
  }
  ::KillTimer(nullptr, timer);
  stop = true;
  flood.join();
  EXPECT_GE(ticks, 10);
  EXPECT_GE(heard.size(), 100u);
  EXPECT_EQ(woken, 1);
}

}  // namespace
}  // namespace net
