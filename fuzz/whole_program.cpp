// Arbitrary bytes as events of a whole program, one a line: packets, user commands, time, failing files, a failing
// network, and restarts. The first byte chooses the code page, and whether the program goes through its whole start or
// joins at once.
#include "support/whole_program.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "core/globals.h"
#include "core/language.h"
#include "core/log.h"
#include "core/message_box.h"
#include "core/runtime_error.h"
#include "core/start_up.h"
#include "core/text.h"
#include "fuzz/fuzz_target.h"
#include "support/memory_files.h"
#include "support/recording_desktop.h"

namespace {

constexpr int kMaxStarts = 2;  // each costs as much as a hundred events
constexpr std::int32_t kListenStep = 1000;
constexpr std::size_t kMaxOpenByUser = 4;

class Session {
 public:
  explicit Session(std::string_view events) : rest_(events) {
    const unsigned char choice = fuzz::TakeByte(rest_);
    fuzz::ChooseCodePage(choice);
    support::ResetDesktop();
    support::Files() = {};
    support::Files()["Lang.con"] =
        "Code,English,Deutsch\r\n1201,user|users|online,Benutzer|Benutzer|da\r\n10201,is here,ist da\r\n";
    core::gLangError = -1;  // do not report the missing texts
    support::Desktop().onPending = [this] { Pending(); };
    if (choice & 1)
      Start();
    else
      JoinAtOnce();
  }
  ~Session() { support::ResetDesktop(); }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void Run() {
    while (!rest_.empty()) {
      Next();
      const std::string_view violation = program_->Violation();
      if (!violation.empty()) std::fprintf(stderr, "%s\n", violation.data());
      fuzz::Require(violation.empty());
      support::Desktop().events.clear();
    }
  }

 private:
  void Next();

  void JoinAtOnce() {
    core::LoadLang();
    core::gUserName = core::gCurName = "anna";
    program_.emplace();
    static_cast<core::Program&>(*program_).LoadMain();
    program_->messenger.OpenSocket();
  }

  void Start() {
    ++starts_;
    program_.emplace();
    core::Main(*program_, "");
    program_->HearOwn();
  }

  // Time passes while the start listens, and datagrams arrive while a chat window opens.
  void Pending() {
    if (core::gStarting != 0) support::Desktop().ticks += kListenStep;
    if (core::gDispatching && rest_.starts_with('h')) program_->Hear(fuzz::TakeLine(rest_).substr(1));
  }

  // The settings outlive the program.
  void Restart() {
    if (starts_ >= kMaxStarts) return;
    const std::string name = core::gCurName;
    const std::vector<std::string> groups = program_->users.GroupLines();
    support::Files().firstFailing = std::numeric_limits<int>::max();
    program_->refuses = false;
    core::ShutDown(*program_);
    Start();
    fuzz::Require(core::gUserName == name && core::gCurName.starts_with(name));
    fuzz::Require(program_->users.GroupLines() == groups);
  }

  // Edit controls yield no line breaks here, and the settings file cannot store a quote.
  static std::string Typed(std::string_view text) {
    std::string typed = fuzz::Typed(text);
    std::erase_if(typed, [](char c) { return c == '"' || c == '\r'; });
    return std::string(core::Trim(typed));
  }

  void Accept(std::string_view arguments) {
    support::WholeProgram::Options options{.name = Typed(arguments.substr(0, arguments.find(',')))};
    arguments.remove_prefix(std::min(arguments.find(','), arguments.size() - 1) + 1);
    options.colour = fuzz::TakeByte(arguments);
    if (options.colour % 2) options.language = "Deutsch";
    options.loadsLanguage = options.colour % 4 < 2;
    for (const std::string_view name : core::BarFields(arguments))
      if (const std::string typed = Typed(name); !typed.empty()) options.blocked.push_back(typed);
    options.groupLines = program_->users.GroupLines();
    try {
      program_->Accept(options);
    } catch (const core::RuntimeError& error) {
      fuzz::Require(error.number == static_cast<long>(support::Files().failure));
    }
  }

  void SetGroups(std::string_view line) {
    std::vector<std::string> lines = program_->users.GroupLines();
    const std::string typed = Typed(line);
    if (typed.find('|') != std::string::npos && lines.size() < 8) lines.push_back(typed);
    if (typed.empty()) lines.clear();
    program_->users.SetGroupLines(std::move(lines));
    program_->users.RefGroups();
    program_->users.UpdateStat();
  }

  void ToggleBlock(unsigned char row) {
    const toolkit::ListRows& rows = program_->users.lvUsers;
    program_->users.lvUsers.SetSelected(rows.At(row % rows.Count()), true);
    program_->users.ToggleBlock();
    program_->users.lvUsers.SetSelected(rows.At(row % rows.Count()), false);
  }

  void UseChat(char action, std::string_view arguments) {
    if (program_->chats.empty()) return;
    const std::size_t index = fuzz::TakeByte(arguments) % program_->chats.size();
    support::PlainChat& chat = program_->Chat(index);
    if (action == 'a') chat.participants.AddUsers(arguments);
    if (action == 'r') chat.participants.RemoveUser(arguments);
    if (action == 'w') chat.participants.Send(arguments, program_->messenger);
    if (action == 'p') Export(chat, arguments.empty() ? "chat.txt" : "chat.rtf");
    if (action == 'x') program_->Close(index);
  }

  // A failed export must leave no file.
  static void Export(const support::PlainChat& chat, std::string_view name) {
    try {
      chat.Export(std::string(name));
      fuzz::Require(support::Files().files.contains(name));
    } catch (const core::RuntimeError&) {
      fuzz::Require(!support::Files().files.contains(name));
    }
    support::Files().files.erase(std::string(name));
  }

  void UsePopup(unsigned char choice) {
    if (program_->popups.empty()) return;
    const conversation::Alert alert = program_->popups.front();
    if (choice % 3 == 1) program_->Block(alert.sender);
    if (choice % 3 == 2) program_->SendAlert(alert.sender, "back");
    program_->ClosePopup(0);
  }

  static void FailFiles(unsigned char steps) {
    support::MemoryFiles& files = support::Files();
    files.firstFailing = files.steps + 1 + steps % 16;
    files.lastFailing = files.firstFailing + steps / 16;
  }

  std::string_view rest_;
  std::optional<support::WholeProgram> program_;
  int starts_ = 0;
};

void Session::Next() {
  std::string_view event = fuzz::TakeLine(rest_);
  const char kind = static_cast<char>(fuzz::TakeByte(event));
  switch (kind) {
    case 'e':
      return program_->HearOwn();
    case 't':
      return program_->PassTime(fuzz::TakeByte(event) * 100u);
    case 's':
      return program_->SetStatus(static_cast<std::int16_t>(fuzz::TakeByte(event) % 3));
    case 'b':
      return program_->Block(std::string(event));
    case 'u':
      return program_->users.RemoveBlock(event);
    case 'B':
      return ToggleBlock(fuzz::TakeByte(event));
    case 'o':
      return Accept(event);
    case 'g':
      return SetGroups(event);
    case 'c':
      if (program_->chats.size() < kMaxOpenByUser) program_->StartChat(event);
      return;
    case 'a':
    case 'r':
    case 'w':
    case 'p':
    case 'x':
      return UseChat(kind, event);
    case 'M':
      return program_->AddRecipients(event);
    case 'm':
      return program_->SendAlert(event, "hello");
    case 'k':
      return UsePopup(fuzz::TakeByte(event));
    case 'n':
      program_->refuses = !program_->refuses;
      return;
    case 'd':
      return program_->SetNetworkDown(!program_->IsNetworkDown());
    case 'f':
      return FailFiles(fuzz::TakeByte(event));
    case 'q':
      return Restart();
    case 'y':
      return core::ShowPostedBoxes();
    default:
      return program_->Hear(event);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Session(fuzz::TextOf(data, size)).Run();
  return 0;
}
