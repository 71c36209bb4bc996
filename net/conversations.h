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

  // Shows one line when the sender, or everybody, takes part in this window; false when not.
  virtual bool AddMsg(std::string_view text, std::string_view sender, std::int32_t colour) = 0;

  // Takes a participant out, if present.
  virtual void RemoveUser(std::string_view name) = 0;

  // Icons of the participants anew; the names offered for adding anew. Both are called after every packet and cost
  // nothing when the roster has not changed since.
  virtual void RefUserList() = 0;
  virtual void RefListOfUsers() = 0;
};

class Conversations {
 public:
  virtual ~Conversations() = default;

  // Every open chat window in order of creation. Whoever lets a window act on what it is told (it may close, or another
  // may open) walks a copy; a closed window refuses lines and ignores the rest.
  virtual const std::vector<std::shared_ptr<ChatWindow>>& ChatWindows() const = 0;

  // Opens a chat window; participants are names parted by bars. It lets pending events run once. Null while too
  // many chat windows are open.
  virtual std::shared_ptr<ChatWindow> OpenChat(std::string_view participants) = 0;

  // Shows an alert in a popup of its own; the kind chooses its picture: 0 to everybody, 1 private.
  virtual void ShowAlert(std::string_view text, std::string_view sender, int iconKind) = 0;
};

}  // namespace net
