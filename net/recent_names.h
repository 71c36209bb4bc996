// A set of names whose entries expire after ten seconds: senders with hidden names, and senders that were answered.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>

namespace net {

class RecentNames {
 public:
  // The listening time of a start: a hidden name is gone after it, and nobody starts again sooner.
  static constexpr std::uint32_t kSpan = 10000;  // milliseconds

  // Further names are ignored: they would make no difference, and a flood of invented names must not exhaust the
  // memory.
  static constexpr std::size_t kMaxNames = 2000;

  // Times are tick counts and may wrap around.
  void Note(std::string_view name, std::int32_t now);
  bool Has(std::string_view name, std::int32_t now) const;

  // The approximate number of names: those that expired within the last seconds may be included.
  std::size_t Count(std::int32_t now);

 private:
  void Forget(std::int32_t now);

  // By hash, because a name may be as long as a packet; a collision costs no more than an answer.
  std::unordered_map<std::size_t, std::int32_t> times_;
  std::int32_t forgotten_ = 0;  // time of the last removal of expired names
};

}  // namespace net
