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

  // Each step requires the ones before it, so the first failing step ends the check.
  ExitCode Run(Milliseconds wait) {
    if (ListInterfaces() && CollectAnswers(wait)) CheckAnswers();
    out_ << (faults_ == 0 ? "Nothing wrong was found.\n" : "");
    return faults_ == 0 ? kDone : kNetworkFailed;
  }

 private:
  void Fault(const std::string& what, const std::string& advice) {
    ++faults_;
    out_ << "FAULT: " << what << "\n  " << advice << '\n';
  }

  bool ListInterfaces() {
    std::uint32_t outgoing = 0;
    try {
      outgoing = wire::AddressTowards({.host = broadcast_, .port = net::kPort});
    } catch (const core::RuntimeError& error) {
      failure_ = error.description;
    }
    const auto interfaces = wire::Interfaces();
    for (const wire::Interface& each : interfaces) {
      out_ << each.name << ": " << wire::HostText(each.address) << (each.isUp ? "" : ", down");
      if (!each.broadcasts) out_ << ", no broadcasts";
      out_ << (each.address == outgoing ? "  <- broadcasts leave here" : "") << '\n';
    }
    if (failure_.empty()) return true;
    Fault("no interface takes a broadcast to " + wire::HostText(broadcast_) + " (" + failure_ + ").",
          "Connect the machine to the network; on Linux it needs a default route.");
    return false;
  }

  bool CollectAnswers(Milliseconds wait) try {
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
          "If another program has opened the port exclusively, end it: \"ss -lunp\" on Linux and \"netstat -anob -p "
          "UDP\" on Windows show which one.");
    return false;
  }

  // Looks at datagrams, not events: a second user of a name with the same state causes no event. Stores listed names
  // only, because their number is bounded.
  void NoteHost(const wire::Datagram& datagram, const SegmentView& view) {
    const auto user = view.Users().find(net::SplitPacket(datagram.bytes).sender);
    if (user != view.Users().end()) hosts_[user->first].insert(datagram.sender.host);
  }

  void CheckAnswers() {
    out_ << "This machine's own broadcast " << (cameBack_ ? "comes back.\n" : "does not come back.\n");
    if (!cameBack_)
      Fault("this machine does not hear its own broadcast.",
            "Its firewall blocks UDP port 1414: allow it in both directions, as the administrator's guide shows.");
    out_ << view_.Users().size() << " on the network:\n";
    PrintUsers(out_, view_);
    if (view_.Users().empty())
      Fault(
          "nobody answers.",
          "If somebody is there, check that both machines are on one segment (routers do not forward broadcasts), that "
          "broadcasts leave by the right interface, and that the others' firewalls allow UDP port 1414.");
    FindSharedNames();
  }

  void FindSharedNames() {
    for (auto each = view_.Users().begin(); each != view_.Users().end(); ++each) {
      for (auto other = std::next(each); other != view_.Users().end(); ++other)
        if (core::EqualIgnoringCase(each->first, other->first))
          Fault("\"" + Printable(each->first) + "\" and \"" + Printable(other->first) + "\" differ only in case.",
                "Copies list only the first of them that they hear, so one of the two is missing: rename one of them.");
    }
    for (const auto& [name, hosts] : hosts_)
      if (hosts.size() > 1)
        Fault("\"" + Printable(name) + "\" is heard from " + std::to_string(hosts.size()) + " machines.",
              "Two users have the same name: rename one of them.");
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
