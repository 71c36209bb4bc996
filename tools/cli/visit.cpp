#include "tools/cli/visit.h"

#include <algorithm>
#include <csignal>
#include <random>

#include "core/runtime_error.h"
#include "net/packet.h"

namespace cli {
namespace {

// Short, because a signal does not interrupt every wait on every system.
constexpr Milliseconds kMaxWait{300};

volatile std::sig_atomic_t gEnded = 0;

// Random, so that two instances that ask at the same time do not take each other's question for their own.
std::string HiddenName() { return std::string(1, net::kHiddenMark) + "cli-" + std::to_string(std::random_device()()); }

}  // namespace

Visit::Visit(std::uint32_t broadcast) : port_(broadcast), question_(net::BuildPacket(HiddenName(), net::kPresence)) {
  try {
    port_.Open(net::kPort);
  } catch (const core::RuntimeError& error) {
    throw NetworkError("UDP port " + std::to_string(net::kPort) + " cannot be opened: " + error.description);
  }
}

void Visit::Ask() { Send(question_); }

void Visit::Send(std::string_view packet) {
  port_.Send(packet);
  if (!port_.Failure().empty()) throw NetworkError("the broadcast cannot be sent: " + port_.Failure());
}

void Visit::Listen(Milliseconds time, const std::function<bool()>& enough) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + time;
  wire::Datagram datagram;
  while (!gEnded && !enough()) {
    const auto left = std::chrono::ceil<Milliseconds>(end - Clock::now());
    if (left <= Milliseconds(0)) return;
    if (port_.Receive(datagram, std::min(left, kMaxWait))) Take(datagram);
  }
}

void Visit::Take(const wire::Datagram& datagram) {
  for (const Event& event : view_.Take(datagram)) onEvent(event);
  onDatagram(datagram);
}

void Visit::EndOnSignals() {
  for (const int signal : {SIGINT, SIGTERM}) std::signal(signal, [](int) { gEnded = 1; });
}

bool Visit::Ended() { return gEnded != 0; }

}  // namespace cli
