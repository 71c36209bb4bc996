// The whole program without its windows, in one process: this code calls the portable parts in the same order as the
// windows do. After each step Violation() checks the program's invariants.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/program.h"
#include "net/dispatcher.h"
#include "ui/conversation/alert_queue.h"
#include "ui/conversation/conversation.h"
#include "ui/conversation/participants.h"
#include "ui/main/user_roster.h"

namespace support {

// A chat window without a window.
class PlainChat : public net::ChatWindow {
 public:
  PlainChat(const core::Roster& roster, const toolkit::ListRows& online);

  bool AddMsg(std::string_view text, std::string_view sender, std::int32_t colour) override;
  void RemoveUser(std::string_view name) override;
  void RefUserList() override;
  void RefListOfUsers() override {}

  const std::vector<std::string>& Offered();  // names that the user can add, as when the menu opens

  // Writes text or markup, by the extension of the path.
  void Export(const std::string& path) const;

  conversation::Participants participants;
  conversation::Conversation said;
  bool open = true;

 private:
  const toolkit::ListRows& online_;
  conversation::UsersOnline lstUsers_;
};

class WholeProgram : public core::Program, net::DatagramPort, net::Conversations {
 public:
  static constexpr std::size_t kMaxChats = 6;  // opened by lines; a fuzzer would not reach the real limit

  WholeProgram();

  // The network's part.
  void Hear(std::string_view datagram);
  void HearOwn();  // delivers the broadcasts that it has sent to itself
  void PassTime(std::uint32_t milliseconds);
  bool refuses = false;            // to open the port
  void SetNetworkDown(bool down);  // sends what is unsent when it is up again
  bool IsNetworkDown() const { return isDown_; }

  // The user's part. Names are separated by bars.
  struct Options {
    std::string name;
    std::int32_t colour = 0;
    std::string language = "English";
    bool loadsLanguage = true;  // at once, not at the next start
    std::vector<std::string> blocked{}, groupLines{};
  };
  bool Accept(const Options& options);  // false when the name is refused; throws file errors
  void SetStatus(std::int16_t status);
  void Block(const std::string& name);  // from a popup
  PlainChat& StartChat(std::string_view participants);
  void Close(std::size_t chat);
  void AddRecipients(std::string_view names);                            // to the open composer, or to a new one
  void SendAlert(std::string_view recipients, const std::string& text);  // adds them too, and closes the composer
  void ClosePopup(std::size_t popup);

  bool IsOpen() const { return open_; }  // the port

  // Describes a violated invariant, or is empty.
  std::string_view Violation();

  // Set while memory or files fail: lines may then be lost, but none may be wrong.
  bool mayLose = false;

  mainwindow::UserRoster users;
  net::Messenger messenger{*this};
  net::Dispatcher dispatcher{users, *this, messenger};
  std::vector<std::shared_ptr<net::ChatWindow>> chats;  // each a PlainChat
  std::vector<conversation::Alert> popups;
  std::optional<conversation::Recipients> composer;  // empty while no composer is open

  PlainChat& Chat(std::size_t index) { return static_cast<PlainChat&>(*chats[index]); }

 private:
  struct Expected {
    std::shared_ptr<net::ChatWindow> chat;
    std::size_t lines;  // before the datagram
    bool takes;
  };
  std::optional<std::string_view> ChatLineIn(std::string_view datagram) const;
  bool WouldBeListed(std::string_view name) const;
  void CheckLines(const std::vector<Expected>& before, bool isLine);
  std::size_t HashOfKept() const;
  void ShowWaitingAlerts();
  void WriteLists(const Options& options);
  std::string ExpectedCounts() const;
  std::string_view RowViolation(const toolkit::ListRow& row) const;
  std::string_view ComposerViolation() const;
  std::string_view ChatViolation(PlainChat& chat) const;
  std::vector<std::string> OfferedNames() const;

  void LoadMain() override;
  void MoveMain(const core::WindowBounds&) override { LoadMain(); }
  core::WindowBounds RestoreMain() override { return {0, 0, 2505, 4605}; }
  core::Roster& Users() override { return users; }
  void ShowSplash() override {}
  void HideSplash() override {}
  core::WindowBounds Screen() override { return {0, 0, 15360, 11520}; }
  void OpenSocket() override { messenger.OpenSocket(); }
  void CloseSocket() override { messenger.CloseSocket(); }
  void ShowOptionsAtStartUp() override;
  void ShowTray() override {}
  void RemoveTray() override {}

  void Open(int port) override;
  void Close() override;
  void Send(std::string_view bytes) override;
  void WakeIn(std::uint32_t milliseconds) override;

  const std::vector<std::shared_ptr<net::ChatWindow>>& ChatWindows() const override { return chats; }
  std::shared_ptr<net::ChatWindow> OpenChat(std::string_view participants) override;
  void ShowAlert(std::string_view text, std::string_view sender, int iconKind) override;

  conversation::AlertQueue alerts_;
  bool loaded_ = false, open_ = false, isDown_ = false;
  net::UnsentQueue unsent_;
  std::vector<std::string> unsentTexts_;  // lines and alerts in the queue
  std::string openName_;                  // the user's name when the port was opened
  std::deque<std::string> own_;
  std::optional<std::int32_t> wakeAt_;
  std::size_t waiting_ = 0;  // datagrams heard while another was dispatched
  std::string_view violation_;
};

}  // namespace support
