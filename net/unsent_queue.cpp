#include "net/unsent_queue.h"

#include <algorithm>

#include "net/packet.h"

namespace net {
namespace {

bool IsPresence(std::string_view datagram) {
  const Packet packet = TakeApart(datagram);
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
  if (waiting_.size() >= kMaxCount || bytes_ + bytes.size() > kMaxBytes) return false;
  waiting_.emplace_back(bytes);
  bytes_ += bytes.size();
  return true;
}

void UnsentQueue::RemoveFront() {
  bytes_ -= waiting_.front().size();
  waiting_.pop_front();
}

void UnsentQueue::Clear() {
  waiting_.clear();
  bytes_ = 0;
}

}  // namespace net
