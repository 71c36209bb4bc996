// A fake network and fake windows for tests: everything that would be sent or shown is recorded as one line, in order.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/runtime_error.h"
#include "core/text.h"
#include "net/conversations.h"
#include "net/datagram_port.h"

namespace support {

class RecordingPort : public net::DatagramPort {
 public:
  std::vector<std::string> sent;
  bool refuses = false;
  bool open = true;
  std::uint32_t wakeIn = 0;

  void Open(int port) override {
    if (refuses) throw core::RuntimeError(10048, "Address already in use");
    open = true;
    sent.push_back("open " + std::to_string(port));
  }
  void Close() override {
    open = false;
    sent.push_back("close");
  }
  void Send(std::string_view bytes) override { sent.emplace_back(bytes); }
  void WakeIn(std::uint32_t milliseconds) override { wakeIn = milliseconds; }
};

// A window of the given participants.
class RecordingChat : public net::ChatWindow {
 public:
  RecordingChat(std::vector<std::string>& shown, std::string title, std::vector<std::string> participants)
      : shown_(shown), title_(std::move(title)), participants_(std::move(participants)) {}

  bool AddMsg(std::string_view text, std::string_view sender, std::int32_t colour) override {
    const auto takes = [sender](const std::string& name) {
      return core::EqualIgnoringCase(name, sender) || name == "(All)";
    };
    if (std::ranges::none_of(participants_, takes)) return false;
    shown_.push_back(title_ + " " + std::string(sender) + ": " + std::string(text) + " #" + std::to_string(colour));
    return true;
  }
  void RemoveUser(std::string_view name) override { shown_.push_back(title_ + " without " + std::string(name)); }
  void RefUserList() override { ++refreshedIcons; }
  void RefListOfUsers() override { ++refreshedNames; }

  int refreshedIcons = 0, refreshedNames = 0;

 private:
  std::vector<std::string>& shown_;
  std::string title_;
  std::vector<std::string> participants_;
};

class RecordingConversations : public net::Conversations {
 public:
  std::vector<std::string> shown;
  std::vector<std::shared_ptr<net::ChatWindow>> windows;
  std::function<void()> onOpen;  // called while a chat window opens
  bool refuses = false;

  std::shared_ptr<RecordingChat> Add(std::string title, std::vector<std::string> participants) {
    auto window = std::make_shared<RecordingChat>(shown, std::move(title), std::move(participants));
    windows.push_back(window);
    return window;
  }

  const std::vector<std::shared_ptr<net::ChatWindow>>& ChatWindows() const override { return windows; }

  std::shared_ptr<net::ChatWindow> OpenChat(std::string_view participants) override {
    if (refuses) return nullptr;
    shown.push_back("open " + std::string(participants));
    auto window = Add("new", {std::string(participants.substr(1))});
    if (onOpen) onOpen();
    return window;
  }

  void ShowAlert(std::string_view text, std::string_view sender, int iconKind) override {
    shown.push_back("alert " + std::string(sender) + ": " + std::string(text) + " (" + std::to_string(iconKind) + ")");
  }
};

}  // namespace support
