// The senders of the last ten seconds: who takes part under a hidden name, who was answered.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>

namespace net {

class RecentNames {
 public:
  // A start listens that long, so a hidden copy is gone after it, and nobody comes back sooner.
  static constexpr std::uint32_t kSpan = 10000;  // milliseconds

  // Further names are not noted: more would change nothing, and invented ones must not fill the memory.
  static constexpr std::size_t kMaxNames = 2000;

  // The times are tick counts, which may wrap around.
  void Note(std::string_view name, std::int32_t now);
  bool Has(std::string_view name, std::int32_t now) const;

  // How many were noted lately, give or take those of the last seconds of the span.
  std::size_t Count() const { return times_.size(); }

 private:
  void Forget(std::int32_t now);

  // By their hashes: a name may be as long as a packet, and one that is taken for another loses nothing but an answer.
  std::unordered_map<std::size_t, std::int32_t> times_;
  std::int32_t forgotten_ = 0;  // when the old ones were last removed
};

}  // namespace net
