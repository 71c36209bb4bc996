// Datagrams queued until the network is back.
#pragma once

#include <deque>
#include <string>
#include <string_view>

namespace net {

class UnsentQueue {
 public:
  static constexpr std::size_t kMaxCount = 100, kMaxBytes = 1024 * 1024;

  // Appends a datagram. A repeated name, colour or state replaces the queued one: answers to others, who are still
  // heard while sending fails, must not displace texts. Returns false, and keeps the queue, if the datagram does not
  // fit.
  bool Add(std::string_view bytes);

  bool Empty() const { return waiting_.empty(); }
  const std::string& Front() const { return waiting_.front(); }
  void RemoveFront() { waiting_.pop_front(); }
  void Clear() { waiting_.clear(); }

 private:
  std::size_t Bytes() const;

  std::deque<std::string> waiting_;
};

}  // namespace net
