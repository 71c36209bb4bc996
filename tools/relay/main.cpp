// quillon-relay: joins the segments of a company through an MQTT broker, one relay on each segment.
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

constexpr milliseconds kLongestWait{200};
constexpr seconds kShortestPause{1}, kLongestPause{60};  // between attempts to connect
constexpr int kMaxAtOnce = 200;                          // datagrams, before the broker gets its turn

constexpr int kMisused = 2;

volatile std::sig_atomic_t gAskedToEnd = 0;

// Without SA_RESTART: a connection to a host that does not answer is tried for minutes.
void EndOnSignals() {
  struct sigaction end {};
  end.sa_handler = [](int) { gAskedToEnd = 1; };
  for (const int signal : {SIGINT, SIGTERM}) ::sigaction(signal, &end, nullptr);
}

// The journal adds the time.
void Tell(const std::string& text) {
  std::printf("%s\n", text.c_str());
  std::fflush(stdout);
}

std::string RelayName() { return wire::HostName() + "-" + std::to_string(std::random_device()()); }

class Service {
 public:
  Service(Rules rules, const BrokerAddress& address, seconds reportEvery)
      : relay_(std::move(rules), Clock::now()),
        election_(RelayName()),
        broker_(address, election_.OwnName(), relay_.TheRules().HolderTopic(),
                {.onConnected = [this] { OnConnected(); },
                 .onDisconnected = [this] { OnDisconnected(); },
                 .onMessage = [this](auto topic, auto bytes, bool old) { OnMessage(topic, bytes, old); }}),
        reportEvery_(reportEvery) {
    ear_.Open({.host = wire::kAnyHost, .port = net::kPort});
    mouth_.Open({.host = wire::kAnyHost, .port = 0});
  }

  void Run() {
    while (!gAskedToEnd) {
      if (broker_.Handle() < 0) ConnectWhenDue();
      Wait();
      broker_.Serve();
      PassOut();
      if (election_.TakeClaim(Clock::now())) Hold(election_.OwnName());
      ReportWhenDue();
    }
    if (election_.InCharge()) Hold({});
    broker_.Disconnect();
  }

 private:
  void Hold(std::string_view name) { broker_.PublishRetained(relay_.TheRules().HolderTopic(), name); }

  void ConnectWhenDue() {
    if (Clock::now() < connectAt_) return;
    const bool connected = broker_.Connect();
    if (!connected) Tell("no connection to the broker: " + broker_.Failure());
    connectAt_ = Clock::now() + pause_;
    pause_ = std::min(2 * pause_, kLongestPause);
  }

  void Wait() const {
    pollfd waiting[] = {{.fd = static_cast<int>(ear_.Handle()), .events = POLLIN, .revents = 0},
                        {.fd = broker_.Handle(), .events = POLLIN, .revents = 0}};
    if (broker_.WantsToWrite()) waiting[1].events |= POLLOUT;
    ::poll(waiting, std::size(waiting), static_cast<int>(kLongestWait.count()));
  }

  void OnConnected() {
    Tell("connected to the broker");
    pause_ = kShortestPause;
    election_.OnConnected(Clock::now());
    broker_.Subscribe(relay_.TheRules().HolderTopic());
    broker_.Subscribe(relay_.TheRules().GroupTopics());
  }

  void OnDisconnected() {
    Tell("no connection to the broker: " + broker_.Failure());
    election_.OnDisconnected();
  }

  void OnMessage(std::string_view topic, std::string_view bytes, bool old) {
    if (topic == relay_.TheRules().HolderTopic()) return OnHolder(bytes);
    if (!election_.InCharge() || !relay_.PassesIn(topic, bytes, old, Clock::now())) return;
    if (!mouth_.Send(bytes, {.host = wire::kLimitedBroadcast, .port = net::kPort})) relay_.NoteLost(false);
  }

  void OnHolder(std::string_view name) {
    const bool before = election_.InCharge();
    election_.OnHolder(name, Clock::now());
    if (election_.InCharge() != before) Tell(election_.InCharge() ? "in charge" : "standing by");
  }

  // What is heard while another relay is in charge, or the broker away, is taken off the socket all the same.
  void PassOut() {
    wire::Datagram datagram;
    for (int i = 0; i < kMaxAtOnce && ear_.Receive(datagram, 0); ++i) {
      if (!election_.InCharge() || !relay_.PassesOut(datagram, Clock::now())) continue;
      if (!broker_.Publish(relay_.TheRules().Topic(), datagram.bytes)) relay_.NoteLost(true);
    }
  }

  void ReportWhenDue() {
    if (Clock::now() - reported_ < reportEvery_) return;
    reported_ = Clock::now();
    const char* role = election_.InCharge() ? "in charge" : broker_.IsConnected() ? "standing by" : "no broker";
    Tell(std::string(role) + "; " + relay_.TakeCounts());
  }

  Relay relay_;
  Election election_;
  Broker broker_;
  wire::UdpSocket ear_, mouth_;
  seconds pause_ = kShortestPause, reportEvery_;
  Clock::time_point connectAt_ = Clock::now(), reported_ = Clock::now();
};

std::string FirstLine(const std::string& path) {
  std::ifstream file(path);
  std::string line;
  if (!std::getline(file, line)) throw BrokerError("no password can be read from " + path);
  return line;
}

int Main(int argc, char** argv) {
  CLI::App app("Joins segments of Quillon through an MQTT broker.", "quillon-relay");
  Rules rules{.group = "office", .segment = wire::HostName(), .keptKinds = {}};
  BrokerAddress address;
  std::string passwordFile;
  int codePage = wire::DefaultCodePage(), reportEvery = 60;
  app.add_option("--broker", address.host, "Host of the broker")->capture_default_str();
  app.add_option("--port", address.port, "Its port; 8883 is usual with TLS")->capture_default_str();
  app.add_option("--user", address.user, "User at the broker");
  app.add_option("--password-file", passwordFile, "File whose first line is the password");
  app.add_option("--ca-file", address.caFile, "Certificates of the authorities to trust: uses TLS");
  app.add_option("--certificate", address.certificateFile, "Own certificate, where the broker asks for one");
  app.add_option("--key", address.keyFile, "Its key");
  app.add_option("--group", rules.group, "Segments of one group hear each other")->capture_default_str();
  app.add_option("--segment", rules.segment, "This segment's name, the same for all its relays")->capture_default_str();
  app.add_option("--filter", rules.keptKinds, "Letters of packet kinds that do not cross: B for notices");
  app.add_option("--rate", rules.packetsPerSecond, "Packets a second, at most, in each direction")
      ->capture_default_str();
  app.add_option("--codepage", codePage, "ANSI code page of the segment's desks")->capture_default_str();
  app.add_option("--report", reportEvery, "Seconds from one line of counts to the next")->capture_default_str();
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? 0 : kMisused;  // --help is one, too
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
