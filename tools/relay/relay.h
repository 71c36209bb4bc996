// Decides which packets a relay forwards.
//
// Packets cannot loop, whatever the number of relays and segments: copies send from port 1414, a relay broadcasts from
// another port, and relays only forward packets that were sent from port 1414.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "tools/relay/election.h"
#include "tools/wire/udp_socket.h"

namespace relay {

// A token bucket: `perSecond` packets a second, and bursts of up to two seconds' worth.
class RateLimit {
 public:
  RateLimit(double perSecond, Clock::time_point now) : perSecond_(perSecond), left_(Capacity()), filled_(now) {}

  bool Take(Clock::time_point now) {
    left_ = std::min(Capacity(), left_ + perSecond_ * std::chrono::duration<double>(now - filled_).count());
    filled_ = now;
    if (left_ < 1) return false;
    left_ -= 1;
    return true;
  }

 private:
  double Capacity() const { return 2 * perSecond_; }

  double perSecond_, left_;
  Clock::time_point filled_;
};

// Packets of one direction since the last report.
struct Counts {
  std::uint64_t passed = 0, filtered = 0, overRate = 0, refused = 0;

  // "12 passed, 0 filtered, 0 over the rate, 0 refused"
  std::string Text() const;
};

struct Rules {
  std::string group, segment;      // of the topic "quillon/GROUP/SEGMENT"
  std::string filteredKinds;       // letters of the kinds that are not forwarded, in capitals
  double packetsPerSecond = 2000;  // about what all copies of a segment send while they answer newcomers

  // Throws std::invalid_argument when group or segment cannot be part of a topic, a kind is not a letter, or the rate
  // is too low.
  void Check() const;

  std::string Topic() const { return "quillon/" + group + "/" + segment; }
  std::string GroupTopics() const { return "quillon/" + group + "/+"; }
  std::string HolderTopic() const { return Topic() + "/relay"; }
};

class Relay {
 public:
  Relay(Rules rules, Clock::time_point now)
      : rules_(std::move(rules)), outLimit_(rules_.packetsPerSecond, now), inLimit_(rules_.packetsPerSecond, now) {}

  // Whether to publish a datagram of the relay's own segment. Counts it.
  bool PassesOut(const wire::Datagram& datagram, Clock::time_point now);

  // Whether to broadcast a message from the broker on the relay's segment. Counts it. A retained message is refused
  // because it is old.
  bool PassesIn(std::string_view topic, std::string_view bytes, bool retained, Clock::time_point now);

  // Corrects the counts for a packet that passed, but was then refused by the broker or the network.
  void NoteLost(bool outwards);

  // Returns the counts since the last call, as text.
  std::string TakeCounts();

  const Rules& GetRules() const { return rules_; }

 private:
  bool Passes(std::string_view bytes, RateLimit& limit, Counts& counts, Clock::time_point now);

  Rules rules_;
  RateLimit outLimit_, inLimit_;
  Counts out_, in_;
};

}  // namespace relay
