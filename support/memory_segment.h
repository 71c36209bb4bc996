// A simulated segment: real copies (Dispatcher, Messenger, UserRoster) in one process, with a virtual clock and a
// network that delivers every broadcast to all of them. A thousand machines take seconds, and the result is
// deterministic.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "net/dispatcher.h"
#include "tools/relay/relay.h"
#include "ui/main/user_roster.h"

namespace support {

using Time = std::chrono::microseconds;  // since the creation of the segment
using namespace std::chrono_literals;

struct Conditions {
  double loss = 0;               // share of the packets that a desk does not hear; its own are never lost
  Time perPacket = 20us;         // processor time of a desk for each packet received
  std::size_t buffer = 8 << 20;  // of the receive buffer, bytes; packets beyond it are lost
  net::AnswerLimits limits{};

  // The desks are distributed over this number of segments, connected by relays. A packet reaches another segment after
  // this delay, if neither the sender's relay nor that segment's relay exceeds its rate.
  int segments = 1;
  Time crossing = 5ms;
  double relayRate = 2000;  // packets a second

  // Packets that arrive within this time are handled desk by desk, so that a desk's rows stay in the processor's cache.
  // Must be shorter than the minimum delay of an answer; 0 = strictly in order.
  Time together{0};
};

class MemorySegment;

// One user's machine with one copy. Settings are globals, so they are swapped in while a copy runs.
class Desk : net::DatagramPort, net::Conversations {
 public:
  Desk(MemorySegment& segment, int place, std::string name, std::int32_t colour, std::int16_t status);

  // Joins under a hidden name, and after listening under its own.
  void Start();
  // Joins under its own name with these users on its list.
  void Join(const std::deque<Desk>& known);
  void Accept(std::string name, std::int32_t colour);  // new options
  void Leave();
  void Kill();  // without leaving, as in a power cut

  void Hear(std::string_view packet);

  // Has joined under its own name.
  bool IsUp() const { return open_ && starting_ == 0; }
  // Lists the other one with its current colour and state.
  bool Knows(const Desk& other) const;

  // The number of its segment.
  int Place() const { return place_; }
  Time BusiestSecond() const;  // processor time

 private:
  class Seat;
  struct Copy {
    Copy(Desk& desk, const net::AnswerLimits& limits) : messenger(desk, limits), dispatcher(users, desk, messenger) {}
    mainwindow::UserRoster users;
    net::Messenger messenger;
    net::Dispatcher dispatcher;
  };

  void Rejoin(std::string name);
  void Later(Time after, std::function<void()> action);

  void Open(int) override { open_ = true; }
  void Close() override { open_ = false; }
  void Send(std::string_view packet) override;
  void WakeIn(std::uint32_t milliseconds) override;
  const std::vector<std::shared_ptr<net::ChatWindow>>& ChatWindows() const override { return windows_; }
  std::shared_ptr<net::ChatWindow> OpenChat(std::string_view) override { return nullptr; }
  void ShowAlert(std::string_view, std::string_view, int) override {}

  MemorySegment& segment_;
  int place_;
  std::string userName_, curName_;
  std::int32_t colour_;
  std::int16_t status_, starting_ = 0;
  std::unique_ptr<Copy> copy_;
  bool open_ = false;
  unsigned kills_ = 0, wakes_ = 0;
  Time busyUntil_{0}, lastArrival_{0};
  std::vector<Time> busy_;  // by second
  std::vector<std::shared_ptr<net::ChatWindow>> windows_;
};

class MemorySegment {
 public:
  explicit MemorySegment(const Conditions& conditions = {});

  std::deque<Desk>& Desks() { return desks_; }
  void Add(std::string name, std::int32_t colour, std::int16_t status);
  // Starts all desks as if they had been running for a while and knew each other.
  void StartSettled();

  void At(Time time, std::function<void()> action);
  // Advances the clock; actions and arrivals happen in order of time.
  void RunUntil(Time end);
  Time Now() const { return now_; }

  // Delivers a packet to every desk whose port is open on arrival, later than `after`. Returns the time of arrival.
  Time Broadcast(std::string packet, Time after = Time(0), const Desk* sender = nullptr);

  const std::vector<std::uint32_t>& PacketsBySecond() const { return packets_; }
  // If set, receives all packets in the order of sending.
  std::vector<std::string>* transcript = nullptr;

 private:
  friend Desk;
  struct Event {
    Time time;
    std::uint64_t number;
    std::function<void()> action;  // none = the arrival of a packet
    std::string packet{};
    const Desk* sender = nullptr;
    int place = 0;
  };
  struct Relay {
    relay::RateLimit out, in;
  };
  static bool IsLater(const Event& a, const Event& b) {
    return a.time != b.time ? a.time > b.time : a.number > b.number;
  }

  static void SetClock(Time time);
  void Push(Event event);
  Event Pop();
  void Cross(const std::string& packet, Time arrival, int from);
  void Deliver(const std::vector<Event>& arrivals);

  Conditions conditions_;
  std::minstd_rand ways_{1}, losses_{2}, delays_{3};
  Time now_{0};
  std::uint64_t eventCount_ = 0;
  std::vector<Event> events_;  // a heap, the next one first
  std::deque<Desk> desks_;
  std::vector<Relay> relays_;  // of each segment
  bool settling_ = false;
  std::vector<std::uint32_t> packets_;  // by second
};

}  // namespace support
