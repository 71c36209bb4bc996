// Which of the relays of one segment forwards, so that a second one doubles nothing and takes over when it is needed.
//
// Each segment has one retained text at the broker: the name of the relay in charge. A relay that finds none claims the
// charge by writing its own name; of two that claim at once the one whose name the broker took last has it, for both
// hear both names in the same order. The last will of every relay empties the text. So does that of one which stood by:
// the one in charge then writes its name again at once, before the others claim.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace relay {

using Clock = std::chrono::steady_clock;

class Election {
 public:
  // What is retained arrives at once after connecting, and the answer of the one in charge to a foreign last will
  // within a round trip: only then is the charge claimed.
  static constexpr std::chrono::milliseconds kPatience{1000};

  explicit Election(std::string ownName) : ownName_(std::move(ownName)) {}

  void OnConnected(Clock::time_point now);
  void OnDisconnected();

  // The text at the broker, empty when nobody is in charge.
  void OnHolder(std::string_view name, Clock::time_point now);

  // True when the own name is to be written now.
  bool TakeClaim(Clock::time_point now);

  bool InCharge() const { return inCharge_; }
  const std::string& OwnName() const { return ownName_; }

 private:
  std::string ownName_;
  bool inCharge_ = false;
  std::optional<Clock::time_point> claimAt_;
};

}  // namespace relay
