#include "tools/relay/election.h"

namespace relay {

void Election::OnConnected(Clock::time_point now) { claimAt_ = now + kClaimDelay; }

void Election::OnDisconnected() {
  inCharge_ = false;
  claimAt_.reset();
}

void Election::OnHolder(std::string_view name, Clock::time_point now) {
  if (name.empty()) {
    claimAt_ = inCharge_ ? now : now + kClaimDelay;
  } else {
    inCharge_ = name == ownName_;
    claimAt_.reset();
  }
}

bool Election::TakeClaim(Clock::time_point now) {
  if (!claimAt_ || now < *claimAt_) return false;
  claimAt_.reset();
  return true;
}

}  // namespace relay
