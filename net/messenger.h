// The send operations: every other part of the program speaks to the network through these.
#pragma once

#include <string_view>

#include "net/answer_budget.h"
#include "net/datagram_port.h"

namespace net {

class Messenger {
 public:
  explicit Messenger(DatagramPort& sktBC, const AnswerLimits& limits = {}) : sktBC_(sktBC), answers_(limits) {}

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

  // A newcomer is answered with presence, colour and state: at once, or by SendOwed, as the limits want it. For what
  // the arguments mean see AnswerBudget::Ask.
  void AnswerNewcomer(bool listed, std::size_t names);

  // What the port wakes its owner for.
  void SendOwed();

  // Own colour and state, as every joining announces them.
  void SendColour();
  void SendState();

  // Counts the openings of the socket, so that others can tell one stay on the network from the next.
  unsigned Openings() const { return openings_; }

 private:
  void BeginAnswers();
  void SendAnswer();
  void WakeWhenDue(std::int32_t now);

  DatagramPort& sktBC_;
  AnswerBudget answers_;
  unsigned openings_ = 0;
};

}  // namespace net
