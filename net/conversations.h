// Popups and chat windows as the dispatcher sees them.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace net {

class ChatWindow {
 public:
  virtual ~ChatWindow() = default;

  // Shows a line if the sender, or "(All)", is a participant of this window; false otherwise.
  virtual bool AddMsg(std::string_view text, std::string_view sender, std::int32_t colour) = 0;

  // Removes a participant, if present.
  virtual void RemoveUser(std::string_view name) = 0;

  // Update the icons of the participants, and the names offered for adding. Called on every packet, so they must return
  // at once when the roster has not changed.
  virtual void RefUserList() = 0;
  virtual void RefListOfUsers() = 0;
};

class Conversations {
 public:
  virtual ~Conversations() = default;

  // Every open chat window in order of creation. Iterate over a copy when a call may close or open a window. A closed
  // window refuses lines and ignores everything else.
  virtual const std::vector<std::shared_ptr<ChatWindow>>& ChatWindows() const = 0;

  // Opens a chat window; participants are names separated by bars. Runs pending events. Null when too many chat windows
  // are open.
  virtual std::shared_ptr<ChatWindow> OpenChat(std::string_view participants) = 0;

  // Shows an alert in a new popup; the kind is 0 for an alert to everybody, 1 for a private one.
  virtual void ShowAlert(std::string_view text, std::string_view sender, int iconKind) = 0;
};

}  // namespace net
