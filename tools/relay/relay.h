// What a relay passes on, and what it does not.
//
// Nothing can circle, however many relays and segments there are: copies send from port 1414, a relay broadcasts from
// another port, and no relay takes from its segment what does not come from port 1414.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "tools/relay/election.h"
#include "tools/wire/udp_socket.h"

namespace relay {

// So many packets a second, and at most those of two seconds at once.
class RateLimit {
 public:
  RateLimit(double perSecond, Clock::time_point now) : perSecond_(perSecond), left_(Most()), filled_(now) {}

  bool Take(Clock::time_point now) {
    left_ = std::min(Most(), left_ + perSecond_ * std::chrono::duration<double>(now - filled_).count());
    filled_ = now;
    if (left_ < 1) return false;
    left_ -= 1;
    return true;
  }

 private:
  double Most() const { return 2 * perSecond_; }

  double perSecond_, left_;
  Clock::time_point filled_;
};

// Of one direction, since they were last told.
struct Counts {
  std::uint64_t passed = 0, filtered = 0, overRate = 0, refused = 0;

  // "12 passed, 0 filtered, 0 over the rate, 0 refused"
  std::string Text() const;
};

struct Rules {
  std::string group, segment;      // of the topic "quillon/GROUP/SEGMENT"
  std::string keptKinds;           // letters of the kinds that do not cross, in capitals
  double packetsPerSecond = 2000;  // about what all copies of a segment send together while they answer

  // Throws std::invalid_argument when a topic cannot be made of group and segment, or a kind is no letter.
  void Check() const;

  std::string Topic() const { return "quillon/" + group + "/" + segment; }
  std::string GroupTopics() const { return "quillon/" + group + "/+"; }
  std::string HolderTopic() const { return Topic() + "/relay"; }
};

class Relay {
 public:
  Relay(Rules rules, Clock::time_point now)
      : rules_(std::move(rules)), outLimit_(rules_.packetsPerSecond, now), inLimit_(rules_.packetsPerSecond, now) {}

  // Whether a datagram of the own segment goes to the broker.
  bool PassesOut(const wire::Datagram& datagram, Clock::time_point now);

  // Whether a message of the broker is broadcast on the own segment. A retained one is old: nobody is told again that
  // he joined or was alerted yesterday.
  bool PassesIn(std::string_view topic, std::string_view bytes, bool retained, Clock::time_point now);

  // A packet that passed, and was then not taken by the broker or the network.
  void NoteLost(bool outwards);

  // What has been counted since the last call.
  std::string TakeCounts();

  const Rules& TheRules() const { return rules_; }

 private:
  bool Passes(std::string_view bytes, RateLimit& limit, Counts& counts, Clock::time_point now);

  Rules rules_;
  RateLimit outLimit_, inLimit_;
  Counts out_, in_;
};

}  // namespace relay
