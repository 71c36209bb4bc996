// Elects one relay of a segment to forward. The others stand by and forward nothing, so that no packet is doubled.
//
// Each segment has one retained message at the broker: the name of the relay in charge. A relay that finds none claims
// the role by publishing its own name. If two claim at once, the last name that the broker received wins, because both
// receive both names in the same order. The last will of every relay clears the message, even that of a relay which
// stood by: the relay in charge then publishes its name again at once, before others claim the role.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace relay {

using Clock = std::chrono::steady_clock;

class Election {
 public:
  // Wait before a claim: long enough for the retained message after connecting, and for the relay in charge to answer
  // another relay's last will.
  static constexpr std::chrono::milliseconds kClaimDelay{1000};

  explicit Election(std::string ownName) : ownName_(std::move(ownName)) {}

  void OnConnected(Clock::time_point now);
  void OnDisconnected();

  // Called with the retained message, empty when no relay is in charge.
  void OnHolder(std::string_view name, Clock::time_point now);

  // True when this relay's name must be published now.
  bool TakeClaim(Clock::time_point now);

  bool InCharge() const { return inCharge_; }
  const std::string& OwnName() const { return ownName_; }

 private:
  std::string ownName_;
  bool inCharge_ = false;
  std::optional<Clock::time_point> claimAt_;
};

}  // namespace relay
