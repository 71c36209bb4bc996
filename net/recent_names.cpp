#include "net/recent_names.h"

#include "core/clock.h"
#include "core/text.h"

namespace net {
namespace {

constexpr std::uint32_t kForgetInterval = 2500;  // milliseconds; scanning all names on every packet would be slow

}  // namespace

void RecentNames::Note(std::string_view name, std::int32_t now) {
  Forget(now);
  const std::size_t hash = core::NameHash()(name);
  if (times_.size() < kMaxNames || times_.contains(hash)) times_[hash] = now;
}

bool RecentNames::Has(std::string_view name, std::int32_t now) const {
  const auto found = times_.find(core::NameHash()(name));
  return found != times_.end() && core::TicksSince(found->second, now) < kSpan;
}

std::size_t RecentNames::Count(std::int32_t now) {
  Forget(now);
  return times_.size();
}

void RecentNames::Forget(std::int32_t now) {
  if (core::TicksSince(forgotten_, now) < kForgetInterval) return;
  forgotten_ = now;
  std::erase_if(times_, [now](const auto& each) { return core::TicksSince(each.second, now) >= kSpan; });
}

}  // namespace net
