#include "tools/cli/check.h"

#include <algorithm>
#include <map>
#include <ostream>
#include <set>

#include "core/runtime_error.h"
#include "core/text.h"
#include "tools/cli/report.h"
#include "tools/wire/local_network.h"

namespace cli {
namespace {

class Checker {
 public:
  Checker(std::uint32_t broadcast, std::ostream& out) : broadcast_(broadcast), out_(out) {}

  // Each step needs the ones before it, so the first that cannot be done is the last.
  ExitCode Run(Milliseconds wait) {
    if (ListInterfaces() && AskAround(wait)) LookAtAnswers();
    out_ << (faults_ == 0 ? "Nothing wrong was found.\n" : "");
    return faults_ == 0 ? kDone : kNetworkFailed;
  }

 private:
  void Fault(const std::string& what, const std::string& advice) {
    ++faults_;
    out_ << "FAULT: " << what << "\n  " << advice << '\n';
  }

  bool ListInterfaces() {
    std::uint32_t leaving = 0;
    try {
      leaving = wire::AddressTowards({.host = broadcast_, .port = net::kPort});
    } catch (const core::RuntimeError& error) {
      failure_ = error.description;
    }
    const auto interfaces = wire::Interfaces();
    for (const wire::Interface& each : interfaces) {
      out_ << each.name << ": " << wire::HostText(each.address) << (each.isUp ? "" : ", down");
      if (!each.broadcasts) out_ << ", no broadcasts";
      out_ << (each.address == leaving ? "  <- broadcasts leave here" : "") << '\n';
    }
    if (failure_.empty()) return true;
    Fault("no interface takes a broadcast to " + wire::HostText(broadcast_) + " (" + failure_ + ").",
          "Connect the machine to the network; on Linux it needs a default route.");
    return false;
  }

  bool AskAround(Milliseconds wait) try {
    Visit visit(broadcast_);
    visit.onDatagram = [&](const wire::Datagram& datagram) {
      if (datagram.bytes == visit.Question()) cameBack_ = true;
      NoteHost(datagram, visit.View());
    };
    visit.Ask();
    visit.Listen(wait);
    view_ = visit.View();
    return true;
  } catch (const NetworkError& error) {
    Fault(error.what() + std::string("."),
          "If another program holds the port for itself alone, end it: \"ss -lunp\" on Linux and \"netstat -anob -p "
          "UDP\" "
          "on Windows name it.");
    return false;
  }

  // Two who answer alike under one name make no event of the second, so each datagram counts. Only listed names are
  // kept: the list is bounded.
  void NoteHost(const wire::Datagram& datagram, const SegmentView& view) {
    const auto user = view.Users().find(net::TakeApart(datagram.bytes).sender);
    if (user != view.Users().end()) hosts_[user->first].insert(datagram.sender.host);
  }

  void LookAtAnswers() {
    out_ << "The own broadcast " << (cameBack_ ? "comes back.\n" : "does not come back.\n");
    if (!cameBack_)
      Fault("this machine does not hear its own broadcast.",
            "Its firewall stops UDP port 1414: allow it in both directions, as the administrator's guide shows.");
    out_ << view_.Users().size() << " on the network:\n";
    PrintUsers(out_, view_);
    if (view_.Users().empty())
      Fault("nobody answers.",
            "If somebody is there: do both machines stand in one segment (routers pass no broadcasts), do broadcasts "
            "leave "
            "by the right interface, do the others' firewalls allow UDP port 1414?");
    FindSharedNames();
  }

  void FindSharedNames() {
    for (auto each = view_.Users().begin(); each != view_.Users().end(); ++each) {
      for (auto other = std::next(each); other != view_.Users().end(); ++other)
        if (core::EqualIgnoringCase(each->first, other->first))
          Fault("\"" + Printable(each->first) + "\" and \"" + Printable(other->first) +
                    "\" are one name in different case.",
                "Copies list only the first of them that they hear, so one of the two is missing: give one another "
                "name.");
    }
    for (const auto& [name, hosts] : hosts_)
      if (hosts.size() > 1)
        Fault("\"" + Printable(name) + "\" is heard from " + std::to_string(hosts.size()) + " machines.",
              "Two users go by one name: give one of them another.");
  }

  std::uint32_t broadcast_;
  std::ostream& out_;
  int faults_ = 0;
  std::string failure_;
  bool cameBack_ = false;
  SegmentView view_;
  std::map<std::string, std::set<std::uint32_t>> hosts_;
};

}  // namespace

ExitCode Check(std::uint32_t broadcast, Milliseconds wait, std::ostream& out) {
  return Checker(broadcast, out).Run(wait);
}

}  // namespace cli
