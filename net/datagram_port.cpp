#include "net/datagram_port.h"

#include <algorithm>

#include "net/packet.h"

namespace net {
namespace {

bool IsPresence(std::string_view datagram) {
  const Packet packet = SplitPacket(datagram);
  return IsKind(packet.kind, kColour) || IsKind(packet.kind, kState) ||
         (IsKind(packet.kind, kPresence) && packet.argument.empty());
}

}  // namespace

bool UnsentQueue::Add(std::string_view bytes) {
  const auto repeated = IsPresence(bytes) ? std::ranges::find(waiting_, bytes) : waiting_.end();
  if (repeated != waiting_.end()) {
    std::rotate(repeated, repeated + 1, waiting_.end());
    return true;
  }
  if (waiting_.size() >= kMaxCount || Bytes() + bytes.size() > kMaxBytes) return false;
  waiting_.emplace_back(bytes);
  return true;
}

std::size_t UnsentQueue::Bytes() const {
  std::size_t bytes = 0;
  for (const std::string& each : waiting_) bytes += each.size();
  return bytes;
}

}  // namespace net
