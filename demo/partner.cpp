// A scripted user for trying out a copy: joins the network, and answers newcomers, alerts and chat lines. Built from
// the program's own net code. It broadcasts: start it on a private network only (script/run does).
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <string_view>

#include "core/globals.h"
#include "core/runtime_error.h"
#include "core/start_up.h"
#include "demo/partner_windows.h"
#include "demo/terminal.h"
#include "net/dispatcher.h"
#include "tools/wire/udp_port.h"
#include "ui/main/user_roster.h"

namespace {

constexpr char kUsage[] =
    "usage: partner [--name NAME] [--colour NUMBER] [--state 0|1|2] [--delay SECONDS] [--chat] [--public] [--verbose]\n"
    "               [--alert-after SECONDS TEXT TO] [--listen] [--for SECONDS] [--broadcast ADDRESS]\n"
    "  --delay        time until an alert or a chat line is answered (1.5)\n"
    "  --chat         answer chat lines too\n"
    "  --public       send answers to chat lines to everybody\n"
    "  --verbose      show every packet\n"
    "  --alert-after  send an alert to one user, or to (All)\n"
    "  --listen       join as the program does: first for ten seconds under a hidden name\n"
    "  --for          leave after this time; otherwise on SIGINT or SIGTERM\n"
    "  --broadcast    address to send to (255.255.255.255); a loopback address keeps all packets in the machine\n";

struct Options {
  std::string name = "partner";
  demo::AnswerOptions answers;
  bool sendsAlert = false, listens = false;
  std::chrono::milliseconds alertAfter{0}, stays = std::chrono::hours(24 * 365);
  std::string alertText, alertTo;
  std::uint32_t broadcast = wire::kLimitedBroadcast;
};

// Iterates over the command line; an invalid one prints the usage and ends the process.
class Arguments {
 public:
  Arguments(int argc, char** argv) : next_(argv + 1), end_(argv + argc) {}

  bool AtEnd() const { return next_ == end_; }
  std::string Text() {
    if (AtEnd()) Refuse();
    return *next_++;
  }
  double Number() {
    const std::string text = Text();
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0') Refuse();
    return number;
  }
  std::chrono::milliseconds Seconds() { return std::chrono::milliseconds(static_cast<long>(Number() * 1000)); }
  std::uint32_t Host() {
    try {
      return wire::ParseHost(Text());
    } catch (const std::invalid_argument&) {
      Refuse();
    }
  }

  [[noreturn]] static void Refuse() {
    std::fputs(kUsage, stderr);
    std::exit(2);
  }

 private:
  char** next_;
  char** end_;
};

Options Parse(Arguments arguments) {
  Options options;
  while (!arguments.AtEnd()) {
    const std::string word = arguments.Text();
    if (word == "--name") {
      options.name = arguments.Text();
    } else if (word == "--colour") {
      core::gColour = static_cast<std::int32_t>(arguments.Number());
    } else if (word == "--state") {
      core::gStatus = static_cast<std::int16_t>(arguments.Number());
    } else if (word == "--delay") {
      options.answers.delay = arguments.Seconds();
    } else if (word == "--chat") {
      options.answers.answersChats = true;
    } else if (word == "--public") {
      options.answers.toEverybody = true;
    } else if (word == "--verbose") {
      demo::ShowPackets(true);
    } else if (word == "--alert-after") {
      options.sendsAlert = true;
      options.alertAfter = arguments.Seconds();
      options.alertText = arguments.Text();
      options.alertTo = arguments.Text();
    } else if (word == "--listen") {
      options.listens = true;
    } else if (word == "--for") {
      options.stays = arguments.Seconds();
    } else if (word == "--broadcast") {
      options.broadcast = arguments.Host();
    } else {
      Arguments::Refuse();
    }
  }
  return options;
}

volatile std::sig_atomic_t gAskedToLeave = 0;

class ShownPort : public wire::UdpPort {
 public:
  using UdpPort::UdpPort;

  void Send(std::string_view bytes) override {
    demo::ShowPacket("sent", bytes);
    UdpPort::Send(bytes);
  }
};

class Partner {
 public:
  explicit Partner(const Options& options)
      : options_(options), port_(options.broadcast), windows_(messenger_, options.answers) {
    users_.lblStat.captionChanged = [](const std::string& caption) { demo::Show("roster", caption); };
    port_.onWake = [this] { messenger_.SendOwed(); };
  }

  void Run() {
    if (options_.listens) {
      core::gStarting = -1;
      Join("_" + options_.name);
      Serve(std::chrono::milliseconds(core::kListenTime));
      messenger_.CloseSocket();
      core::gStarting = 0;
    }
    Join(options_.name);
    if (options_.sendsAlert) windows_.SendAlertLater(options_.alertAfter, options_.alertText, options_.alertTo);
    Serve(options_.stays);
    messenger_.CloseSocket();
  }

 private:
  void Join(const std::string& name) {
    core::gCurName = name;
    users_.ClearlvUsers();
    messenger_.OpenSocket();
  }

  void Serve(std::chrono::milliseconds time) {
    const auto end = demo::Clock::now() + time;
    wire::Datagram datagram;
    while (!gAskedToLeave && demo::Clock::now() < end) {
      const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - demo::Clock::now());
      const auto wait = std::min(windows_.SendDue(), left);
      if (!port_.Receive(datagram, wait)) continue;
      demo::ShowPacket("heard", datagram.bytes);
      dispatcher_.DataArrived(datagram.bytes);
    }
  }

  const Options& options_;
  mainwindow::UserRoster users_;
  ShownPort port_;
  net::Messenger messenger_{port_};
  demo::PartnerWindows windows_;
  net::Dispatcher dispatcher_{users_, windows_, messenger_};
};

}  // namespace

int main(int argc, char** argv) {
  const Options options = Parse(Arguments(argc, argv));
  // Without SA_RESTART, so that a signal interrupts the wait for a datagram.
  struct sigaction leave {};
  leave.sa_handler = [](int) { gAskedToLeave = 1; };
  ::sigaction(SIGINT, &leave, nullptr);
  ::sigaction(SIGTERM, &leave, nullptr);
  try {
    Partner(options).Run();
  } catch (const core::RuntimeError& error) {
    std::fprintf(stderr, "partner: %s\n", core::NumberAndDescription(error).c_str());
    return 1;
  }
}
