// The relay's connection to an MQTT broker. Everything happens inside Serve and Connect, on the caller's thread.
#pragma once

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

struct mosquitto;

namespace relay {

struct BrokerAddress {
  std::string host = "localhost";
  int port = 1883;
  std::string user, password;
  std::string caFile, certificateFile, keyFile;  // TLS is used when there is a caFile
};

// Settings that the library refuses: an unreadable certificate, say.
struct BrokerError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Broker {
 public:
  // Bytes that may wait while the broker is slow; what is beyond is lost, as datagrams are. While it is away nothing
  // waits: a text that arrives an hour late misleads.
  static constexpr std::size_t kMaxWaiting = 4 * 1024 * 1024;

  struct Events {
    std::function<void()> onConnected, onDisconnected;
    std::function<void(std::string_view topic, std::string_view bytes, bool retained)> onMessage;
  };

  // `will` is a topic that the broker empties when this connection is gone. Throws BrokerError.
  Broker(BrokerAddress address, const std::string& clientName, const std::string& will, Events events);

  // Tries once. False when it fails; Failure tells why.
  bool Connect();
  const std::string& Failure() const { return failure_; }

  // Closes orderly. The last will is for the other cases only.
  void Disconnect();

  bool IsConnected() const { return connected_; }

  // The socket, to be waited for beside others, -1 while there is none.
  int Handle() const;
  bool WantsToWrite() const;

  // Reads, writes and keeps alive, as far as that is possible without waiting.
  void Serve();

  void Subscribe(const std::string& topic);

  // False when it cannot be taken.
  bool Publish(const std::string& topic, std::string_view bytes);
  void PublishRetained(const std::string& topic, std::string_view bytes);

 private:
  struct Freer {
    void operator()(mosquitto* handle) const;
  };

  void SetUpSecurity();
  void SetCallbacks();
  void OnConnect(int code);
  void OnDisconnect(int code);

  BrokerAddress address_;
  Events events_;
  std::unique_ptr<mosquitto, Freer> handle_;
  std::string failure_;
  bool connected_ = false;
  std::size_t waiting_ = 0;  // messages that have not gone out yet, each counted as the largest
};

}  // namespace relay
