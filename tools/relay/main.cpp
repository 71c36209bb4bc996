// quillon-relay: connects the segments of a company through an MQTT broker, with one relay on each segment.
#define CLI11_HAS_FILESYSTEM 0

#include <poll.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <random>

#include "core/runtime_error.h"
#include "net/packet.h"
#include "tools/relay/broker.h"
#include "tools/relay/relay.h"
#include "tools/wire/code_page_text.h"
#include "tools/wire/local_network.h"

namespace relay {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr milliseconds kMaxWait{200};
constexpr seconds kMinRetryDelay{1}, kMaxRetryDelay{60};  // between attempts to connect
constexpr int kMaxAtOnce = 200;                           // datagrams, before the broker is served again

constexpr int kMisused = 2;

volatile std::sig_atomic_t gAskedToEnd = 0;

// Without SA_RESTART, so that a signal interrupts connecting, which may take minutes.
void EndOnSignals() {
  struct sigaction end {};
  end.sa_handler = [](int) { gAskedToEnd = 1; };
  for (const int signal : {SIGINT, SIGTERM}) ::sigaction(signal, &end, nullptr);
}

// Prints without a time, which the journal adds.
void Log(const std::string& text) {
  std::printf("%s\n", text.c_str());
  std::fflush(stdout);
}

std::string RelayName() { return wire::HostName() + "-" + std::to_string(std::random_device()()); }

class Service {
 public:
  Service(Rules rules, const BrokerAddress& address, seconds reportEvery)
      : relay_(std::move(rules), Clock::now()),
        election_(RelayName()),
        broker_(address, election_.OwnName(), relay_.GetRules().HolderTopic(),
                {.onConnected = [this] { OnConnected(); },
                 .onDisconnected = [this] { OnDisconnected(); },
                 .onMessage = [this](auto topic, auto bytes, bool old) { OnMessage(topic, bytes, old); }}),
        reportEvery_(reportEvery) {
    listener_.Open({.host = wire::kAnyHost, .port = net::kPort});
    sender_.Open({.host = wire::kAnyHost, .port = 0});
  }

  void Run() {
    while (!gAskedToEnd) {
      if (broker_.Handle() < 0) ConnectWhenDue();
      Wait();
      broker_.Serve();
      ForwardOut();
      if (election_.TakeClaim(Clock::now())) PublishHolder(election_.OwnName());
      ReportWhenDue();
    }
    if (election_.InCharge()) PublishHolder({});
    broker_.Disconnect();
  }

 private:
  void PublishHolder(std::string_view name) { broker_.PublishRetained(relay_.GetRules().HolderTopic(), name); }

  void ConnectWhenDue() {
    if (Clock::now() < connectAt_) return;
    const bool connected = broker_.Connect();
    if (!connected) Log("no connection to the broker: " + broker_.Failure());
    connectAt_ = Clock::now() + retryDelay_;
    retryDelay_ = std::min(2 * retryDelay_, kMaxRetryDelay);
  }

  void Wait() const {
    pollfd waiting[] = {{.fd = static_cast<int>(listener_.Handle()), .events = POLLIN, .revents = 0},
                        {.fd = broker_.Handle(), .events = POLLIN, .revents = 0}};
    if (broker_.WantsToWrite()) waiting[1].events |= POLLOUT;
    ::poll(waiting, std::size(waiting), static_cast<int>(kMaxWait.count()));
  }

  void OnConnected() {
    Log("connected to the broker");
    retryDelay_ = kMinRetryDelay;
    election_.OnConnected(Clock::now());
    broker_.Subscribe(relay_.GetRules().HolderTopic());
    broker_.Subscribe(relay_.GetRules().GroupTopics());
  }

  void OnDisconnected() {
    Log("no connection to the broker: " + broker_.Failure());
    election_.OnDisconnected();
  }

  void OnMessage(std::string_view topic, std::string_view bytes, bool old) {
    if (topic == relay_.GetRules().HolderTopic()) return OnHolder(bytes);
    if (!election_.InCharge() || !relay_.PassesIn(topic, bytes, old, Clock::now())) return;
    if (!sender_.Send(bytes, {.host = wire::kLimitedBroadcast, .port = net::kPort})) relay_.NoteLost(false);
  }

  void OnHolder(std::string_view name) {
    const bool before = election_.InCharge();
    election_.OnHolder(name, Clock::now());
    if (election_.InCharge() != before) Log(election_.InCharge() ? "in charge" : "standing by");
  }

  // Reads the socket even while standing by or without a broker, so that no old packets are forwarded later.
  void ForwardOut() {
    wire::Datagram datagram;
    for (int i = 0; i < kMaxAtOnce && listener_.Receive(datagram, 0); ++i) {
      if (!election_.InCharge() || !relay_.PassesOut(datagram, Clock::now())) continue;
      if (!broker_.Publish(relay_.GetRules().Topic(), datagram.bytes)) relay_.NoteLost(true);
    }
  }

  void ReportWhenDue() {
    if (Clock::now() - reported_ < reportEvery_) return;
    reported_ = Clock::now();
    const char* role = election_.InCharge() ? "in charge" : broker_.IsConnected() ? "standing by" : "no broker";
    Log(std::string(role) + "; " + relay_.TakeCounts());
  }

  Relay relay_;
  Election election_;
  Broker broker_;
  wire::UdpSocket listener_, sender_;
  seconds retryDelay_ = kMinRetryDelay, reportEvery_;
  Clock::time_point connectAt_ = Clock::now(), reported_ = Clock::now();
};

std::string FirstLine(const std::string& path) {
  std::ifstream file(path);
  std::string line;
  if (!std::getline(file, line)) throw BrokerError("cannot read a password from " + path);
  return line;
}

int Main(int argc, char** argv) {
  CLI::App app("Connects segments of Quillon through an MQTT broker.", "quillon-relay");
  Rules rules{.group = "office", .segment = wire::HostName(), .filteredKinds = {}};
  BrokerAddress address;
  std::string passwordFile;
  int codePage = wire::DefaultCodePage(), reportEvery = 60;
  app.add_option("--broker", address.host, "Host of the broker")->capture_default_str();
  app.add_option("--port", address.port, "Port of the broker; usually 8883 with TLS")->capture_default_str();
  app.add_option("--user", address.user, "User name at the broker");
  app.add_option("--password-file", passwordFile, "File whose first line is the password");
  app.add_option("--ca-file", address.caFile, "Certificates of trusted authorities; enables TLS");
  app.add_option("--certificate", address.certificateFile, "Client certificate, if the broker requires one");
  app.add_option("--key", address.keyFile, "Key of the client certificate");
  app.add_option("--group", rules.group, "Group of segments that are connected with each other")->capture_default_str();
  app.add_option("--segment", rules.segment, "Name of this segment, the same for all its relays")
      ->capture_default_str();
  app.add_option("--filter", rules.filteredKinds, "Letters of packet kinds that are not forwarded: B for notices");
  app.add_option("--rate", rules.packetsPerSecond, "Maximum packets a second in each direction")->capture_default_str();
  app.add_option("--codepage", codePage, "ANSI code page of the segment's desks")->capture_default_str();
  app.add_option("--report", reportEvery, "Interval of the log lines with counts, seconds")->capture_default_str();
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kMisused;  // --help is reported as an error too
  }
  wire::UseCodePage(codePage);
  rules.Check();
  if (!passwordFile.empty()) address.password = FirstLine(passwordFile);
  EndOnSignals();
  Service(std::move(rules), address, seconds(reportEvery)).Run();
  return 0;
}

}  // namespace
}  // namespace relay

int main(int argc, char** argv) {
  try {
    return relay::Main(argc, argv);
  } catch (const std::invalid_argument& error) {
    std::fprintf(stderr, "quillon-relay: %s\n", error.what());
    return relay::kMisused;
  } catch (const core::RuntimeError& error) {
    std::fprintf(stderr, "quillon-relay: port 1414: %s\n", error.description.c_str());
  } catch (const std::exception& error) {
    std::fprintf(stderr, "quillon-relay: %s\n", error.what());
  }
  return 1;
}
