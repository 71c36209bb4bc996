#include "tools/relay/relay.h"

#include <cctype>
#include <stdexcept>
#include <utility>

#include "net/packet.h"

namespace relay {
namespace {

void CheckLevel(const std::string& what, const std::string& level) {
  const bool isGood = !level.empty() && level.find_first_of(std::string("/+#\0", 4)) == std::string::npos;
  if (!isGood) throw std::invalid_argument("a " + what + " must not be empty or contain / + #: \"" + level + "\"");
}

}  // namespace

std::string Counts::Text() const {
  return std::to_string(passed) + " passed, " + std::to_string(filtered) + " filtered, " + std::to_string(overRate) +
         " over the rate, " + std::to_string(refused) + " refused";
}

void Rules::Check() const {
  CheckLevel("group", group);
  CheckLevel("segment", segment);
  const auto isCapital = [](char each) { return each >= 'A' && each <= 'Z'; };
  if (!std::ranges::all_of(filteredKinds, isCapital))
    throw std::invalid_argument("a kind is a capital letter: " + filteredKinds);
  if (!(packetsPerSecond >= 1)) throw std::invalid_argument("the rate must be at least one packet a second");
}

bool Relay::PassesOut(const wire::Datagram& datagram, Clock::time_point now) {
  return datagram.sender.port == net::kPort && Passes(datagram.bytes, outLimit_, out_, now);
}

bool Relay::PassesIn(std::string_view topic, std::string_view bytes, bool retained, Clock::time_point now) {
  if (retained || topic == rules_.Topic()) return false;
  return Passes(bytes, inLimit_, in_, now);
}

bool Relay::Passes(std::string_view bytes, RateLimit& limit, Counts& counts, Clock::time_point now) {
  const std::string_view kind = net::SplitPacket(bytes).kind;
  const bool isFiltered =
      kind.size() == 2 && kind[1] == '/' &&
      rules_.filteredKinds.find(static_cast<char>(std::toupper(static_cast<unsigned char>(kind[0])))) !=
          std::string::npos;
  if (bytes.empty() || bytes.size() > net::kMaxPacket) {
    ++counts.refused;
  } else if (isFiltered) {
    ++counts.filtered;
  } else if (!limit.Take(now)) {
    ++counts.overRate;
  } else {
    ++counts.passed;
    return true;
  }
  return false;
}

void Relay::NoteLost(bool outwards) {
  Counts& counts = outwards ? out_ : in_;
  --counts.passed;
  ++counts.refused;
}

std::string Relay::TakeCounts() {
  return "out: " + std::exchange(out_, {}).Text() + "; in: " + std::exchange(in_, {}).Text();
}

}  // namespace relay
