// Datagrams that wait until the network is back.
#pragma once

#include <deque>
#include <string>
#include <string_view>

namespace net {

class UnsentQueue {
 public:
  static constexpr std::size_t kMaxCount = 100, kMaxBytes = 1024 * 1024;

  // Appends a datagram. A repeated name, colour or state replaces the one that waits: answers to others, who are still
  // heard while sending fails, must not displace texts. Returns false, and keeps the queue, if the datagram does not
  // fit.
  bool Add(std::string_view bytes);

  bool Empty() const { return waiting_.empty(); }
  const std::string& Front() const { return waiting_.front(); }
  void RemoveFront();
  void Clear();

 private:
  std::deque<std::string> waiting_;
  std::size_t bytes_ = 0;
};

}  // namespace net
