// A short visit to a segment: asks who is there without being listed, and listens.
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

// Exit codes of the program, as in its manual page. A check that finds a fault ends with kNetworkFailed, too.
enum ExitCode : int { kDone = 0, kNetworkFailed = 1, kMisused = 2, kAbsent = 3 };

// The network failed.
struct NetworkError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The command line is invalid.
struct UsageError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// On a large segment, copies take up to two seconds to answer.
inline constexpr Milliseconds kAnswerTime{2000};

class Visit {
 public:
  // Throws NetworkError when the port cannot be opened.
  explicit Visit(std::uint32_t broadcast);

  // Sends one packet under a hidden name; every copy answers with presence, colour and state.
  void Ask();

  // Throws NetworkError when the system refuses the packet.
  void Send(std::string_view packet);

  // Listens for this time, or until `enough` returns true after a datagram, or until a signal.
  void Listen(
      Milliseconds time, const std::function<bool()>& enough = [] { return false; });

  // Called for each datagram received, after the view has processed it, and for each event.
  std::function<void(const wire::Datagram&)> onDatagram = [](const auto&) {};
  std::function<void(const Event&)> onEvent = [](const auto&) {};

  const SegmentView& View() const { return view_; }
  const std::string& Question() const { return question_; }

  // Makes SIGINT and SIGTERM end listening instead of the process.
  static void EndOnSignals();
  static bool Ended();

 private:
  void Take(const wire::Datagram& datagram);

  wire::UdpPort port_;
  SegmentView view_;
  std::string question_;
};

}  // namespace cli
