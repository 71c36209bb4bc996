// Handles everything that arrives: updates the roster, answers newcomers, and routes texts to chat windows and popups.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "core/text.h"
#include "core/roster.h"
#include "net/conversations.h"
#include "net/messenger.h"
#include "net/packet.h"

namespace net {

// A set of names whose entries expire after ten seconds: senders with hidden names, and senders that were answered.
class RecentNames {
 public:
  // The duration of listening at start-up: its hidden name has left by then, and no copy starts twice within it.
  static constexpr std::uint32_t kSpan = 10000;  // milliseconds

  // Further names are ignored: they would make no difference, and a flood of invented names must not exhaust the
  // memory.
  static constexpr std::size_t kMaxNames = 2000;

  // Times are tick counts and may wrap around.
  void Note(std::string_view name, std::int32_t now);
  bool Has(std::string_view name, std::int32_t now) const;

  // The approximate number of names: those that expired within the last seconds may be included.
  std::size_t Count(std::int32_t now);

 private:
  void Forget(std::int32_t now);

  // By hash, because a name may be as long as a packet; a collision costs no more than an answer.
  std::unordered_map<std::size_t, std::int32_t> times_;
  std::int32_t forgotten_ = 0;  // time of the last removal of expired names
};

class Dispatcher {
 public:
  // Limits of the queue of datagrams that arrive during a dispatch, and of the hidden senders answered per stay; what
  // is beyond them is dropped, as datagrams may be.
  static constexpr std::size_t kMaxWaiting = 10000, kMaxWaitingBytes = 16 * 1024 * 1024;
  static constexpr std::size_t kMaxHiddenNames = 1000;

  // Lines lost because no window could be opened are logged once per sender and interval, up to a number of senders.
  static constexpr std::uint32_t kLossInterval = 60000;  // milliseconds
  static constexpr std::size_t kMaxLossesNoted = 1000;

  Dispatcher(core::Roster& roster, Conversations& conversations, Messenger& messenger);

  // Dispatches one datagram; the bytes need not outlive the call. Datagrams that arrive during a dispatch (opening a
  // chat window runs timers) are queued and follow in order. A failure is logged and ends that packet only.
  void DataArrived(std::string_view data);

  // The number of datagrams queued.
  std::size_t Waiting() const { return waiting_.size(); }

  void ParsePacket(std::string_view data);

  // Routes one text by its mark.
  void ShowChatLine(std::string_view text, std::string_view sender, bool isPrivate);

  void LogUnknownData(std::string_view data, std::string_view sender);

 private:
  using Action = void (Dispatcher::*)(const Packet&);
  struct Route {
    std::string_view kind;
    Action action;
  };
  static const Route kRoutes[];

  void DispatchCurrent();
  bool Admit(std::string_view sender);
  void Answer(std::string_view sender);
  void AnswerReturning(std::string_view sender);
  std::size_t NamesHeard();
  bool AnswersHidden(std::string_view sender);
  void RefreshChatWindows();
  void OfferChatLine(std::string_view line, std::string_view sender);
  std::shared_ptr<ChatWindow> OpenChat(std::string_view line, std::string_view sender);
  void NoteLostLine(std::string_view sender);

  void HandleColour(const Packet& packet);
  void HandleState(const Packet& packet);
  void HandleText(const Packet& packet);
  void HandleLeave(const Packet& packet);
  void HandlePrivate(const Packet& packet);
  void HandleNotice(const Packet& packet);

  core::Roster& roster_;
  Conversations& conversations_;
  Messenger& messenger_;

  std::string current_;  // a copy: the caller may reuse its buffer during the dispatch
  std::deque<std::string> waiting_;
  std::size_t waitingBytes_ = 0;

  // Hashes of the senders whose lost lines were logged since lossNotedSince_ (a tick count).
  std::unordered_set<std::size_t> lossNoted_;
  std::int32_t lossNotedSince_ = 0;

  // Hashes of the hidden senders answered since the opening with that number. Case-sensitive: _Bob and _bob are two
  // copies that both need an answer, so this is not NameHash; whoever crafts a name with the same hash could just as
  // well send under the name itself.
  std::unordered_set<std::size_t> answered_;
  unsigned answeredSince_ = 0;

  RecentNames hidden_, answeredLately_;
};

}  // namespace net
