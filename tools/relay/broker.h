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

// The library rejects a setting, such as an unreadable certificate.
struct BrokerError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class Broker {
 public:
  // Limit on bytes queued while the broker is slow; further messages are dropped, like datagrams. Nothing is queued
  // without a connection: a text that arrives an hour late misleads.
  static constexpr std::size_t kMaxWaiting = 4 * 1024 * 1024;

  struct Events {
    std::function<void()> onConnected, onDisconnected;
    std::function<void(std::string_view topic, std::string_view bytes, bool retained)> onMessage;
  };

  // `will` is a topic whose retained message the broker clears when this connection is lost. Throws BrokerError.
  Broker(BrokerAddress address, const std::string& clientName, const std::string& will, Events events);

  // Tries once. False when it fails; see Failure.
  bool Connect();
  const std::string& Failure() const { return failure_; }

  // Closes the connection cleanly, so that the broker does not publish the last will.
  void Disconnect();

  bool IsConnected() const { return connected_; }

  // The socket, for poll(); -1 without a connection.
  int Handle() const;
  bool WantsToWrite() const;

  // Reads, writes and keeps the connection alive, without blocking.
  void Serve();

  void Subscribe(const std::string& topic);

  // False when the message is dropped.
  bool Publish(const std::string& topic, std::string_view bytes);
  void PublishRetained(const std::string& topic, std::string_view bytes);

 private:
  struct Deleter {
    void operator()(mosquitto* handle) const;
  };

  void SetUpSecurity();
  void SetCallbacks();
  void OnConnect(int code);
  void OnDisconnect(int code);

  BrokerAddress address_;
  Events events_;
  std::unique_ptr<mosquitto, Deleter> handle_;
  std::string failure_;
  bool connected_ = false;
  std::size_t waiting_ = 0;  // queued messages, each counted with the maximum size
};

}  // namespace relay
