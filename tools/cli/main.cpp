// quillon-cli: alerts people from scripts, shows who is on the network and what is said, and diagnoses the network.
#define CLI11_HAS_FILESYSTEM 0  // only needed for configuration files, which are not used

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <iterator>
#include <limits>

#include "core/version.h"
#include "tools/cli/check.h"
#include "tools/cli/report.h"
#include "tools/cli/send.h"
#include "tools/cli/terminal.h"
#include "tools/wire/code_page_text.h"

namespace {

#define TEXT_OF(number) #number
#define VERSION_OF(major, minor, revision) TEXT_OF(major) "." TEXT_OF(minor) "." TEXT_OF(revision)
constexpr char kVersion[] =
    "quillon-cli " VERSION_OF(QUILLON_VERSION_MAJOR, QUILLON_VERSION_MINOR, QUILLON_VERSION_REVISION);

constexpr char kExitCodes[] =
    "Exit status: 0 on success, 1 if the network fails or check finds a fault, 2 if the command line or the text is "
    "invalid or the sender's name is taken, 3 if a recipient is not on the network.";

// The parser takes a text in brackets for a list, and ignores a "--" after the first name. So an argument that begins
// with a bracket or follows "--" is prefixed with a byte that cannot be typed.
constexpr char kGuard = '\1';

std::vector<std::string> Guarded(const std::vector<std::string>& arguments) {
  std::vector<std::string> guarded;
  bool verbatim = false;
  for (const std::string& each : arguments) {
    if (!verbatim && each == "--")
      verbatim = true;
    else
      guarded.push_back(verbatim || each.starts_with('[') ? kGuard + each : each);
  }
  return guarded;
}

std::string Unguarded(const std::string& argument) { return argument.substr(argument.starts_with(kGuard) ? 1 : 0); }

cli::Milliseconds Seconds(double seconds) { return cli::Milliseconds(static_cast<long long>(seconds * 1000)); }

class CommandLine {
 public:
  CommandLine() {
    app_.set_version_flag("--version", kVersion);
    app_.footer(kExitCodes);
    app_.require_subcommand(1);
    app_.fallthrough();
    app_.add_option("--codepage", codePage_, "ANSI code page of the segment's desks")->capture_default_str();
    app_.add_option("--broadcast", broadcast_, "Address to send to, if limited broadcasts leave by the wrong interface")
        ->capture_default_str();
    AddWho();
    AddMessage("alert", "Send an alert", true);
    AddMessage("say", "Send a chat line", false);
    AddWatch();
    AddCheck();
  }

  int Run(const std::vector<std::string>& arguments) {
    try {
      std::vector<std::string> reversed = Guarded(arguments);
      std::ranges::reverse(reversed);
      app_.parse(std::move(reversed));
    } catch (const CLI::ParseError& error) {
      const bool isHelp = app_.exit(error) == 0;  // or --version
      return isHelp ? cli::kDone : cli::kMisused;
    }
    try {
      wire::UseCodePage(codePage_);
      host_ = wire::ParseHost(broadcast_);
    } catch (const std::invalid_argument& error) {
      throw cli::UsageError(error.what());
    }
    return command_();
  }

 private:
  CLI::App* Add(const char* name, const char* description, cli::ExitCode (CommandLine::*run)()) {
    CLI::App* command = app_.add_subcommand(name, description);
    command->callback([this, run] { command_ = [this, run] { return (this->*run)(); }; });
    return command;
  }

  void AddWait(CLI::App* command, const char* description) {
    command->add_option("--wait", wait_, description)->check(CLI::Range(0.0, 3600.0))->type_name("SECONDS");
  }

  void AddWho() {
    CLI::App* who = Add("who", "List who is on the network, with status and colour", &CommandLine::Who);
    AddWait(who, "How long to listen for answers (3)");
    who->add_flag("--json", json_, "Print a JSON array");
  }

  void AddMessage(const char* name, const char* description, bool isAlert) {
    CLI::App* command = Add(name, description, &CommandLine::SendMessage);
    CLI::Option* words = command->add_option("NAME... TEXT")->expected(1, std::numeric_limits<int>::max() / 2);
    words->allow_extra_args()->required()->description("Recipients, then the text (- reads it from standard input)");
    CLI::Option* all = command->add_flag("--all", message_.toAll, "Send to everybody; excludes NAME");
    command->add_option("--as", message_.as, "Sender's name (USER@HOST)")->type_name("NAME");
    AddWait(command, "Maximum time to wait for the recipients to answer (5)");
    command->parse_complete_callback([this, words, all, isAlert] {
      message_.isAlert = isAlert;
      message_.toAll = all->count() > 0;
      if (message_.as) message_.as = Unguarded(*message_.as);
      std::ranges::transform(words->results(), std::back_inserter(message_.recipients), Unguarded);
    });
  }

  void AddWatch() {
    CLI::App* watch = Add("watch", "Print events, one a line", &CommandLine::Watch);
    watch->add_flag("--json", json_, "Print each event as a JSON object");
    watch->add_flag("--texts", texts_, "Print texts too, including private ones");
    watch->add_option("--for", watchTime_, "End after this time")->check(CLI::Range(0.0, 1e9))->type_name("SECONDS");
  }

  void AddCheck() {
    CLI::App* check = Add("check", "Find out why somebody is missing from a list", &CommandLine::Check);
    AddWait(check, "How long to listen for answers (3)");
  }

  cli::Milliseconds WaitTime(double defaultSeconds) const { return Seconds(wait_.value_or(defaultSeconds)); }

  cli::ExitCode Who() {
    cli::Visit visit(host_);
    visit.Ask();
    visit.Listen(WaitTime(3));
    (json_ ? cli::PrintUsersAsJson : cli::PrintUsers)(std::cout, visit.View());
    return cli::kDone;
  }

  cli::ExitCode SendMessage() {
    message_.text = std::move(message_.recipients.back());
    message_.recipients.pop_back();
    if (message_.toAll != message_.recipients.empty())
      throw cli::UsageError(message_.toAll ? "give either names or --all, not both"
                                           : "a recipient or --all is missing");
    if (message_.text == "-") message_.text = cli::ReadText(std::cin);
    message_.wait = WaitTime(5);
    return cli::Send(message_, host_, std::cerr);
  }

  cli::ExitCode Watch() {
    cli::EventStyle style{.texts = texts_, .answering = true};
    cli::Visit visit(host_);
    visit.onEvent = [&](const cli::Event& event) {
      std::cout << (json_ ? cli::EventJson : cli::EventLine)(event, style) << std::endl;
    };
    const cli::Milliseconds time = Seconds(watchTime_), answers = std::min(time, cli::kAnswerTime);
    const auto outputClosed = [] { return !std::cout; };
    cli::Visit::EndOnSignals();
    visit.Ask();
    visit.Listen(answers, outputClosed);
    style.answering = false;
    visit.Listen(time - answers, outputClosed);
    return cli::kDone;
  }

  cli::ExitCode Check() { return cli::Check(host_, WaitTime(3), std::cout); }

  CLI::App app_{"Alert people on a Quillon network, and see who is there.", "quillon-cli"};
  std::function<cli::ExitCode()> command_;
  int codePage_ = wire::DefaultCodePage();
  std::string broadcast_ = wire::HostText(wire::kLimitedBroadcast);
  std::uint32_t host_ = 0;
  std::optional<double> wait_;
  double watchTime_ = 1e9;
  bool json_ = false, texts_ = false;
  cli::Message message_;
};

}  // namespace

namespace cli {

int Main(const std::vector<std::string>& arguments) {
  const auto report = [](const std::exception& error) { std::cerr << "quillon-cli: " << error.what() << '\n'; };
  try {
    return CommandLine().Run(arguments);
  } catch (const UsageError& error) {
    report(error);
    return kMisused;
  } catch (const std::exception& error) {
    report(error);
    return kNetworkFailed;
  }
}

}  // namespace cli
