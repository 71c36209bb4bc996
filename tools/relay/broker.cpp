#include "tools/relay/broker.h"

#include <mosquitto.h>
#include <mqtt_protocol.h>

#include "net/packet.h"

namespace relay {
namespace {

constexpr int kKeepAlive = 10;       // seconds; the broker considers a client gone after one and a half times that
constexpr int kRetainedQuality = 1;  // at least once, because messages of the election must not get lost
constexpr std::uint32_t kMaxMessage = net::kMaxPacket + 1024;  // bytes, with its topic

Broker& Self(void* object) { return *static_cast<Broker*>(object); }

void Require(int code, const std::string& what) {
  if (code != MOSQ_ERR_SUCCESS) throw BrokerError(what + ": " + mosquitto_strerror(code));
}

const char* OrNull(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

}  // namespace

void Broker::Deleter::operator()(mosquitto* handle) const { mosquitto_destroy(handle); }

Broker::Broker(BrokerAddress address, const std::string& clientName, const std::string& will, Events events)
    : address_(std::move(address)), events_(std::move(events)) {
  mosquitto_lib_init();
  handle_.reset(mosquitto_new(clientName.c_str(), true, this));
  if (!handle_) throw BrokerError("cannot create an MQTT client");
  Require(mosquitto_int_option(handle_.get(), MOSQ_OPT_PROTOCOL_VERSION, MQTT_PROTOCOL_V5), "MQTT 5");
  Require(mosquitto_will_set(handle_.get(), will.c_str(), 0, nullptr, kRetainedQuality, true), "last will");
  SetUpSecurity();
  SetCallbacks();
}

void Broker::SetUpSecurity() {
  if (!address_.user.empty())
    Require(mosquitto_username_pw_set(handle_.get(), address_.user.c_str(), OrNull(address_.password)), "user");
  if (!address_.caFile.empty())
    Require(mosquitto_tls_set(handle_.get(), address_.caFile.c_str(), nullptr, OrNull(address_.certificateFile),
                              OrNull(address_.keyFile), nullptr),
            "certificates");
}

void Broker::SetCallbacks() {
  mosquitto_connect_callback_set(handle_.get(), [](mosquitto*, void* self, int code) { Self(self).OnConnect(code); });
  mosquitto_disconnect_callback_set(handle_.get(),
                                    [](mosquitto*, void* self, int code) { Self(self).OnDisconnect(code); });
  mosquitto_publish_callback_set(handle_.get(), [](mosquitto*, void* self, int) {
    if (Self(self).waiting_ > 0) --Self(self).waiting_;
  });
  mosquitto_message_callback_set(handle_.get(), [](mosquitto*, void* self, const mosquitto_message* message) {
    const std::string_view bytes(static_cast<const char*>(message->payload),
                                 static_cast<std::size_t>(message->payloadlen));
    Self(self).events_.onMessage(message->topic, bytes, message->retain);
  });
}

// Tells the broker not to deliver messages that are larger than any packet.
bool Broker::Connect() {
  mosquitto_property* properties = nullptr;
  mosquitto_property_add_int32(&properties, MQTT_PROP_MAXIMUM_PACKET_SIZE, kMaxMessage);
  const int code =
      mosquitto_connect_bind_v5(handle_.get(), address_.host.c_str(), address_.port, kKeepAlive, nullptr, properties);
  mosquitto_property_free_all(&properties);
  waiting_ = 0;
  failure_ = code == MOSQ_ERR_SUCCESS ? "" : mosquitto_strerror(code);
  return code == MOSQ_ERR_SUCCESS;
}

void Broker::Disconnect() {
  mosquitto_disconnect(handle_.get());
  while (Handle() >= 0 && WantsToWrite() && mosquitto_loop_write(handle_.get(), 1) == MOSQ_ERR_SUCCESS) {
  }
}

void Broker::OnConnect(int code) {
  connected_ = code == 0;
  if (connected_)
    events_.onConnected();
  else
    failure_ = mosquitto_reason_string(code);
}

void Broker::OnDisconnect(int code) {
  if (code != 0 && failure_.empty()) failure_ = mosquitto_strerror(code);
  connected_ = false;
  events_.onDisconnected();
}

int Broker::Handle() const { return mosquitto_socket(handle_.get()); }

bool Broker::WantsToWrite() const { return mosquitto_want_write(handle_.get()); }

// Reads many messages in one call: with TLS they may wait in the library's buffer, where poll() does not see them.
// Skips the calls without a connection, because each would report the lost connection again.
void Broker::Serve() {
  constexpr int kMaxAtOnce = 100;
  if (Handle() >= 0) mosquitto_loop_read(handle_.get(), kMaxAtOnce);
  if (Handle() >= 0 && WantsToWrite()) mosquitto_loop_write(handle_.get(), kMaxAtOnce);
  mosquitto_loop_misc(handle_.get());
}

void Broker::Subscribe(const std::string& topic) {
  mosquitto_subscribe(handle_.get(), nullptr, topic.c_str(), kRetainedQuality);
}

bool Broker::Publish(const std::string& topic, std::string_view bytes) {
  if (!connected_ || (waiting_ + 1) * net::kMaxPacket > kMaxWaiting) return false;
  ++waiting_;
  const int code =
      mosquitto_publish(handle_.get(), nullptr, topic.c_str(), static_cast<int>(bytes.size()), bytes.data(), 0, false);
  if (code != MOSQ_ERR_SUCCESS) --waiting_;
  return code == MOSQ_ERR_SUCCESS;
}

void Broker::PublishRetained(const std::string& topic, std::string_view bytes) {
  ++waiting_;
  mosquitto_publish(handle_.get(), nullptr, topic.c_str(), static_cast<int>(bytes.size()), bytes.data(),
                    kRetainedQuality, true);
}

}  // namespace relay
