// The send operations: every other part of the program speaks to the network through these.
#pragma once

#include <string_view>

#include "net/datagram_port.h"

namespace net {

class Messenger {
 public:
  explicit Messenger(DatagramPort& sktBC) : sktBC_(sktBC) {}

  // A packet from gCurName; an empty command sends nothing.
  void SendCmd(std::string_view command);

  // A text to everybody, already carrying its mark.
  void SendMsg(std::string_view text);

  // "recipient, blank, message": a text to one user. A recipient cannot hold a blank, since the first one ends it.
  void SendPrivate(std::string_view line);

  // Joins: opens the port, lets pending events run once, announces colour and state, and greets unless gStarting is
  // set. Throws the port's error.
  void OpenSocket();

  // Leaves and closes.
  void CloseSocket();

  // Presence, colour and state: the answer to a newcomer.
  void AnswerNewcomer();

  // Own colour and state, as every joining announces them.
  void SendColour();
  void SendState();

  // Counts the openings of the socket, so that others can tell one stay on the network from the next.
  unsigned Openings() const { return openings_; }

 private:
  DatagramPort& sktBC_;
  unsigned openings_ = 0;
};

}  // namespace net
