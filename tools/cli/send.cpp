#include "tools/cli/send.h"

#include <algorithm>
#include <istream>
#include <iterator>
#include <ostream>

#include "core/text.h"
#include "tools/cli/report.h"
#include "tools/wire/code_page_text.h"
#include "tools/wire/local_network.h"

namespace cli {
namespace {

constexpr char kTooLong[] = "the text is too long for a packet";

// In the segment's code page. Throws UsageError.
std::string Encoded(std::string_view utf8) {
  try {
    return wire::ToCodePage(utf8);
  } catch (const std::invalid_argument& error) {
    throw UsageError(error.what());
  }
}

// Windows edit controls do not break a line at a lone line feed, so it becomes CR LF.
std::string WithWindowsLineEnds(std::string_view text) {
  std::string converted;
  for (const char each : text) {
    if (each == '\n' && !converted.ends_with('\r')) converted += '\r';
    converted += each;
  }
  return converted;
}

// Nobody mistakes a name of this form for a person.
std::string DefaultSender() { return wire::LogonName() + "@" + wire::HostName(); }

std::string CheckedName(const std::string& utf8) {
  const std::string name = Encoded(utf8);
  const bool isGood =
      !name.empty() && core::Find(name, "|") == std::string::npos && !name.starts_with(net::kHiddenMark);
  if (!isGood) throw UsageError("\"" + utf8 + "\" is not a valid name: it is empty, begins with _ or contains |");
  return name;
}

// The message in the bytes of the segment's code page.
class Sending {
 public:
  explicit Sending(const Message& message)
      : message_(message),
        sender_(CheckedName(message.as.value_or(DefaultSender()))),
        text_(1, message.isAlert ? net::kAlertMark : net::kChatMark) {
    if (message.text.empty()) throw UsageError("there is no text to send");
    text_ += Encoded(WithWindowsLineEnds(message.text));
    for (const std::string& each : message.recipients) recipients_.push_back(CheckedName(each));
    for (const std::string& each : recipients_)
      if (PacketTo(each).size() > net::kMaxPacket) throw UsageError(kTooLong);
    if (PacketToAll().size() > net::kMaxPacket) throw UsageError(kTooLong);
  }

  void WaitForRecipients(Visit& visit) const {
    visit.Ask();
    const auto everybodyHeard = [&] {
      return std::ranges::all_of(recipients_, [&](const auto& name) { return visit.View().Find(name) != nullptr; });
    };
    // Long enough to detect that somebody has the sender's name.
    if (message_.as) visit.Listen(std::min(kAnswerTime, message_.wait));
    if (everybodyHeard()) return;
    visit.Listen(message_.wait / 2, everybodyHeard);
    if (!everybodyHeard()) visit.Ask();  // a packet may get lost
    visit.Listen(message_.wait / 2, everybodyHeard);
  }

  // A leave packet with the name of a present user would remove that user from all lists.
  void RefuseTakenName(const Visit& visit) const {
    const User* owner = visit.View().Find(sender_);
    if (!owner) return;
    throw UsageError("\"" + Printable(owner->name) + "\" is on the network already, at " + wire::HostText(owner->host) +
                     "; choose another name with --as");
  }

  ExitCode SendToPresent(Visit& visit, std::ostream& errors) const {
    ExitCode code = kDone;
    bool sent = message_.toAll;
    if (message_.toAll) visit.Send(PacketToAll());
    for (const std::string& name : recipients_) {
      const User* user = visit.View().Find(name);
      if (user) {
        visit.Send(PacketTo(user->name));
        WarnOfState(*user, errors);
        sent = true;
      } else {
        errors << "quillon-cli: " << Printable(name) << " is not on the network\n";
        code = kAbsent;
      }
    }
    if (sent) visit.Send(net::BuildPacket(sender_, net::kLeave));
    return code;
  }

 private:
  std::string PacketToAll() const { return net::BuildPacket(sender_, std::string(net::kPresence) + text_); }

  // The recipient comes last, so that a name may contain blanks.
  std::string PacketTo(const std::string& name) const {
    return net::BuildPacket(sender_, std::string(net::kPrivate) + text_ + "|" + name);
  }

  void WarnOfState(const User& user, std::ostream& errors) const {
    const int maxState = message_.isAlert ? 1 : 0;  // that lets the message through
    if (user.state && *user.state > maxState)
      errors << "quillon-cli: " << Printable(user.name) << " will not see it: " << StateText(user) << '\n';
  }

  const Message& message_;
  std::string sender_, text_;
  std::vector<std::string> recipients_;
};

}  // namespace

std::string ReadText(std::istream& in) {
  std::string text;
  while (text.size() <= kMaxTyped && in.good()) {
    std::string piece(4096, '\0');
    in.read(piece.data(), static_cast<std::streamsize>(piece.size()));
    text.append(piece, 0, static_cast<std::size_t>(in.gcount()));
  }
  if (text.size() > kMaxTyped) throw UsageError(kTooLong);
  while (text.ends_with('\n') || text.ends_with('\r')) text.pop_back();
  return text;
}

ExitCode Send(const Message& message, std::uint32_t broadcast, std::ostream& errors) {
  const Sending sending(message);
  Visit visit(broadcast);
  if (message.as || !message.toAll) sending.WaitForRecipients(visit);
  sending.RefuseTakenName(visit);
  return sending.SendToPresent(visit, errors);
}

}  // namespace cli
