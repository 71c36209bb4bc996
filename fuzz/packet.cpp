// Arbitrary bytes as a session of datagrams, one a line, through the dispatcher into the real roster. The first byte
// chooses the code page, the user's state, and whether the user's name is hidden. While a chat window opens, the next
// datagram arrives (re-entrancy).
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "core/globals.h"
#include "core/text.h"
#include "fuzz/fuzz_target.h"
#include "net/dispatcher.h"
#include "support/memory_files.h"
#include "support/recording_desktop.h"
#include "ui/main/user_roster.h"

namespace {

constexpr std::string_view kBlocked = "eve";

// The invariants of the text functions, for any text.
void CheckCharacters(std::string_view text) {
  const std::string lower = core::LowerCase(text);
  fuzz::Require(lower.size() == text.size() && core::LowerCase(lower) == lower);
  fuzz::Require(core::EqualIgnoringCase(lower, text) && core::NameHash()(lower) == core::NameHash()(text));
  std::string fields;
  for (const std::string_view field : core::BarFields(text)) {
    fuzz::Require(core::Find(field, "|") == std::string_view::npos);
    fields.append(field).append(1, '|');
  }
  fuzz::Require(fields.starts_with(text) && fields.size() - text.size() <= 1);
  std::size_t letters = 0, bar = std::string_view::npos;
  while (letters < text.size()) {
    if (text[letters] == '|') bar = letters;
    letters += core::FirstCharacter(text.substr(letters)).size();
    fuzz::Require(core::LeadingCharacters(text, letters).size() == letters);
  }
  fuzz::Require(letters == text.size() && core::FindLast(text, "|") == bar);
}

struct Session : net::DatagramPort, net::Conversations {
  Session(std::string_view text, const std::string& ownName) : rest(text) {
    support::ResetDesktop();
    core::gCurName = ownName;
    core::gLangError = -1;
    users.ClearlvUsers();
    users.AddBlocked(kBlocked);
  }

  void HearNext() {
    const std::string datagram(fuzz::TakeLine(rest));
    ++heard;
    CheckCharacters(datagram);
    dispatcher.DataArrived(datagram);
  }

  void Open(int) override {}
  void Close() override {}
  void WakeIn(std::uint32_t) override {}
  void Send(std::string_view bytes) override {
    ++sent;
    fuzz::Require(net::SplitPacket(bytes).sender == core::gCurName);
  }

  const std::vector<std::shared_ptr<net::ChatWindow>>& ChatWindows() const override { return windows; }
  std::shared_ptr<net::ChatWindow> OpenChat(std::string_view participants) override;
  void ShowAlert(std::string_view, std::string_view sender, int) override {
    fuzz::Require(core::gStatus < 2);
    MayShow(sender);
  }
  void MayShow(std::string_view sender) const {
    fuzz::Require(!core::EqualIgnoringCase(sender, kBlocked));
    fuzz::Require(users.HasRow(sender));
  }

  std::string_view rest;
  std::size_t heard = 0, sent = 0;
  std::vector<std::shared_ptr<net::ChatWindow>> windows;
  mainwindow::UserRoster users;
  net::Messenger messenger{*this};
  net::Dispatcher dispatcher{users, *this, messenger};
};

struct Window : net::ChatWindow {
  Window(Session& session, std::string_view user) : session_(session), user_(user) {}

  bool AddMsg(std::string_view, std::string_view sender, std::int32_t) override {
    fuzz::Require(core::gStatus == 0);
    session_.MayShow(sender);
    return core::EqualIgnoringCase(sender, user_);
  }
  void RemoveUser(std::string_view name) override { fuzz::Require(!session_.users.HasRow(name)); }
  void RefUserList() override {}
  void RefListOfUsers() override {}

  Session& session_;
  std::string user_;
};

std::shared_ptr<net::ChatWindow> Session::OpenChat(std::string_view participants) {
  fuzz::Require(participants.starts_with('|'));
  if (windows.size() >= 8) return nullptr;
  const auto window = windows.emplace_back(std::make_shared<Window>(*this, participants.substr(1)));
  if (!rest.empty()) HearNext();
  return window;
}

void CheckRoster(const Session& session) {
  const toolkit::ListRows& rows = session.users.lvUsers;
  fuzz::Require(rows.Count() <= session.heard + 1);
  fuzz::Require(session.sent <= 3 * session.heard);
  std::size_t bytes = 0;
  const std::vector<toolkit::RowId> ids = rows.Ids();
  for (std::size_t i = 0; i < rows.Count(); ++i) {
    const toolkit::ListRow& row = rows.At(i);
    fuzz::Require(rows.FindId(ids[i]) == &row && rows.FindText(row.text) != nullptr);
    fuzz::Require(row.key.empty() || rows.FindKey(row.key) == &row);
    fuzz::Require(i == 0 || row.key == core::LowerCase(row.text));
    fuzz::Require(!row.text.starts_with('_') || core::EqualIgnoringCase(row.text, core::gCurName));
    bytes += row.text.size() + row.key.size();
  }
  fuzz::Require(bytes == rows.TextBytes());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  support::Files() = {};
  std::string_view text = fuzz::TextOf(data, size);
  const unsigned char choice = fuzz::TakeByte(text);
  fuzz::ChooseCodePage(choice);
  Session session(text, choice & 4 ? "_anna" : "anna");
  core::gStatus = static_cast<std::int16_t>(choice % 4 % 3);
  while (!session.rest.empty()) session.HearNext();
  CheckRoster(session);
  return 0;
}
