// The interface of the broadcast socket, and its queue of unsent datagrams.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace net {

class DatagramPort {
 public:
  virtual ~DatagramPort() = default;

  // Binds 0.0.0.0:port for receiving; sends go to 255.255.255.255:port. Closes an open port first. Throws
  // core::RuntimeError with the number and text of the socket's error.
  virtual void Open(int port) = 0;

  // Does nothing when the port is closed.
  virtual void Close() = 0;

  // Sends one datagram. Failures and a closed port are ignored. Datagrams sent while the network is down are queued
  // until it is up again.
  virtual void Send(std::string_view bytes) = 0;

  // Calls the owner back after this many milliseconds or a little later, unless the port is closed by then. A second
  // call replaces the first one.
  virtual void WakeIn(std::uint32_t milliseconds) = 0;
};

// Datagrams queued until the network is back.
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
