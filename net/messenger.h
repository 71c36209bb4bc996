// Everything that the program sends.
#pragma once

#include <string_view>

#include "net/answer_budget.h"
#include "net/datagram_port.h"

namespace net {

class Messenger {
 public:
  explicit Messenger(DatagramPort& sktBC, const AnswerLimits& limits = {}) : sktBC_(sktBC), answers_(limits) {}

  // Sends a packet from gCurName; an empty command sends nothing.
  void SendCmd(std::string_view command);

  // Sends a text to everybody. It begins with its mark.
  void SendMsg(std::string_view text);

  // Sends a text to one user, from "recipient, blank, message". The first blank ends the recipient.
  void SendPrivate(std::string_view line);

  // Joins: opens the port, runs pending events, announces colour and state, and sends the greeting unless gStarting is
  // set. Throws the port's error.
  void OpenSocket();

  // Announces leaving and closes the port.
  void CloseSocket();

  // Answers a newcomer with presence, colour and state: at once or in SendOwed, within the limits. For the arguments
  // see AnswerBudget::Ask.
  void AnswerNewcomer(bool listed, std::size_t names);

  // Sends the answers that are due. To be called when the port wakes its owner.
  void SendOwed();

  // Announce the user's colour and state.
  void SendColour();
  void SendState();

  // The number of openings so far, which identifies a stay on the network.
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
