// Everything that arrives goes through here: it keeps the roster in step with what is heard, answers newcomers, and
// routes texts to chat windows and alert popups.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

#include "core/roster.h"
#include "net/conversations.h"
#include "net/messenger.h"
#include "net/packet.h"

namespace net {

class Dispatcher {
 public:
  Dispatcher(core::Roster& roster, Conversations& conversations, Messenger& messenger);

  // One received datagram. Datagrams that arrive while another is being dispatched (opening a chat window lets events
  // run) wait and follow in order. A failure of the dispatch is logged and ends that packet.
  void DataArrived(std::string_view data);

  void ParsePacket(std::string_view data);

  // Routes one marked text.
  void ShowChatLine(std::string_view text, std::string_view sender, bool isPrivate);

  void LogUnknownData(std::string_view data, std::string_view sender);

 private:
  // members are the implementer's
};

}  // namespace net
