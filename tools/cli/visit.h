// A short stay on a segment: asks who is there without being listed itself, and listens.
#pragma once

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "tools/cli/segment_view.h"
#include "tools/wire/udp_port.h"

namespace cli {

using Milliseconds = std::chrono::milliseconds;

// What the program ends with, as its manual page says.
enum ExitCode : int { kDone = 0, kNetworkFailed = 1, kMisused = 2, kAbsent = 3 };

// The network does not do what it should.
struct NetworkError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// What was typed makes no sense.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Copies among many answer within two seconds.
inline constexpr Milliseconds kAnswerTime{2000};

class Visit {
 public:
  // Throws NetworkError when the port cannot be opened.
  explicit Visit(std::uint32_t broadcast);

  // One packet under a hidden name, which every copy answers with presence, colour and state.
  void Ask();

  // Throws NetworkError when the system refuses the packet.
  void Send(std::string_view packet);

  // Listens for so long, or until `enough` says so after a datagram, or the user ends the program.
  void Listen(
      Milliseconds time, const std::function<bool()>& enough = [] { return false; });

  // Called with each datagram that is heard, once the view has taken it, and with each event.
  std::function<void(const wire::Datagram&)> onDatagram = [](const auto&) {};
  std::function<void(const Event&)> onEvent = [](const auto&) {};

  const SegmentView& View() const { return view_; }
  const std::string& Question() const { return question_; }

  // From now on SIGINT and SIGTERM end the listening, not the process.
  static void EndOnSignals();
  static bool Ended();

 private:
  void Take(const wire::Datagram& datagram);

  wire::UdpPort port_;
  SegmentView view_;
  std::string question_;
};

}  // namespace cli
